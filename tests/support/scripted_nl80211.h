// A kernel that gives the answers that a test has written down, and keeps the questions.
#ifndef TESTS_SUPPORT_SCRIPTED_NL80211_H
#define TESTS_SUPPORT_SCRIPTED_NL80211_H

#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/result.h"

#include "tools/halvane/input/nl80211_channel.h"

namespace halvane::testing {

class ScriptedNl80211 : public tool::Nl80211Channel {
  public:
    using Answer = Result<tool::Nl80211Answer, tool::Nl80211Fault>;
    using Event = Result<std::optional<Message>, tool::Nl80211Fault>;

    static Answer refusal(int error) {
        return Unexpected(
            tool::Nl80211Fault{.kind = tool::Nl80211Fault::Kind::Refused, .error = error});
    }

    std::deque<Answer> answers{};
    std::deque<Event> events{};
    std::optional<tool::Nl80211Fault> subscriptionFault{};

    int descriptor = -1;
    bool areEventsLost = false;

    std::vector<tool::Nl80211Request> asked{};
    std::vector<std::string> steps{};  // "ask 33", "subscribe scan", "wait"

    Answer ask(const tool::Nl80211Request& request) override {
        asked.push_back(request);
        steps.push_back("ask " + std::to_string(request.command));
        return take(answers, Answer(tool::Nl80211Answer{}));
    }

    std::optional<tool::Nl80211Fault> subscribe(const std::string& group) override {
        steps.push_back("subscribe " + group);
        return subscriptionFault;
    }

    // Behind the last event, the deadline or an interrupt comes.
    Event nextEvent(Clock::time_point, int) override {
        steps.emplace_back("wait");
        return take(events, Event(std::optional<Message>()));
    }

    int eventDescriptor() const override { return descriptor; }

    // All events that are left.
    Result<tool::Nl80211Events, tool::Nl80211Fault> readyEvents() override {
        steps.emplace_back("read");
        tool::Nl80211Events ready;
        ready.wereLost = std::exchange(areEventsLost, false);
        while (!events.empty()) {
            Event event = take(events, Event(std::optional<Message>()));
            if (!event) return Unexpected(event.error());
            if (*event) ready.messages.push_back(std::move(**event));
        }
        return ready;
    }

  private:
    template <typename Item>
    static Item take(std::deque<Item>& items, Item otherwise) {
        if (items.empty()) return otherwise;
        Item item = std::move(items.front());
        items.pop_front();
        return item;
    }
};

}  // namespace halvane::testing

#endif
