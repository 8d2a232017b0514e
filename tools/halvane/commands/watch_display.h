// The screen of `halvane watch`, and the keyboard before it.
//
// For one thread.
#ifndef TOOLS_HALVANE_COMMANDS_WATCH_DISPLAY_H
#define TOOLS_HALVANE_COMMANDS_WATCH_DISPLAY_H

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "halvane/base/mac_address.h"

#include "tools/halvane/input/key.h"
#include "tools/halvane/input/key_decoder.h"
#include "tools/halvane/networks/watch_choices.h"
#include "tools/halvane/networks/watch_list.h"
#include "tools/halvane/networks/watch_screen.h"
#include "tools/halvane/options/list_options.h"
#include "tools/halvane/options/watch_options.h"
#include "tools/halvane/output/screen.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

class WatchDisplay {
  public:
    using Clock = std::chrono::steady_clock;

    // Takes the screen. `keyboard` is a terminal, or -1.
    // REQUIRES: options and list outlive the display.
    WatchDisplay(const WatchOptions& options, WatchList& list, int keyboard);

    // Takes what was typed. Returns whether anything was.
    bool readKeys(Clock::time_point now);

    // When a key is due that nothing has to follow; absent without one. Then call takeDue().
    const std::optional<Clock::time_point>& due() const { return due_; }
    void takeDue();

    // Brings the list up to a time, which is as for the list, and draws it.
    void advance(WatchList::Time time);
    void draw(const WatchStatus& status, WatchList::Time time);

    // Gives the terminal back, and takes it again.
    void leave() noexcept { screen_.leave(); }
    void enter() { screen_.enter(); }
    // Takes it again where others may have changed it meanwhile.
    void renew() { screen_.renew(); }

    // Whether the user or the terminal has ended the watch.
    bool isEnded() const { return choices_.isEnded; }

    // The options with the choices of the user.
    ListOptions chosenOptions() const;

  private:
    void press(const std::vector<Key>& keys);
    std::vector<std::string> lines(const WatchStatus& status, WatchList::Time time);
    std::vector<std::string> listLines(WatchView view, const WatchStatus& status,
                                       const Theme& theme);
    std::vector<std::string> pageLines(const WatchView& view, const WatchStatus& status,
                                       WatchList::Time time, const Theme& theme) const;
    void forgetLostRow();

    const WatchOptions& options_;
    WatchList& list_;
    int keyboard_;
    Screen screen_;
    KeyDecoder decoder_;
    WatchChoices choices_;
    std::optional<Clock::time_point> due_;
    std::vector<MacAddress> rows_;                   // that were drawn
    std::vector<const NetworkColumn*> sortColumns_;  // of the width that was drawn
    std::size_t page_ = 1;
    std::size_t first_ = 0;
};

}  // namespace halvane::tool

#endif
