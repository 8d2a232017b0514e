#include "tools/halvaned/state/state_file.h"

#include <string.h>
#include <string_view>
#include <system_error>
#include <utility>

#include "halvane/base/status.h"
#include "halvane/platform/os/file_internal.h"

#include "tools/halvaned/state/state_text.h"

namespace halvane::hosting {

namespace {

// Wipes a text that may hold passphrases.
class Wiper {
  public:
    explicit Wiper(std::string& text) : text_(text) {}
    Wiper(const Wiper&) = delete;
    Wiper& operator=(const Wiper&) = delete;
    ~Wiper() { ::explicit_bzero(text_.data(), text_.size()); }

  private:
    std::string& text_;
};

std::string fault(const std::string& path, HalvaneStatus status, int error = 0) {
    const std::string reason =
        error != 0 ? std::generic_category().message(error) : HalvaneStatusText(status);
    return path + ": " + reason;
}

Result<LoadedState, std::string> setAside(const std::string& path, const std::string& reason) {
    const auto aside = setFileAside(path);
    if (!aside) {
        return Unexpected(path + ": " + reason +
                          "; it cannot be renamed: " + HalvaneStatusText(aside.error()));
    }
    return LoadedState{.damage = path + ": " + reason + "; it is now " + *aside};
}

}  // namespace

Result<LoadedState, std::string> loadState(const std::string& path) {
    FileText file = readFile(path, kLargestState);
    const Wiper wiper(file.text);
    if (file.status != kStatusOK) return Unexpected(fault(path, file.status, file.error));
    if (!file.isThere) return LoadedState();
    if (file.isTooLong) {
        return setAside(path, "it has more than " + std::to_string(kLargestState) + " bytes");
    }
    auto state = stateFromText(file.text);
    if (!state) return setAside(path, state.error());
    return LoadedState{.state = *std::move(state)};
}

std::optional<std::string> saveState(const std::string& path, const DaemonState& state) {
    auto text = textOf(state);
    if (!text) return path + ": " + text.error();
    const Wiper wiper(*text);
    HalvaneStatus status = makeFolders(folderOf(path), kPrivateFolderMode);
    if (status == kStatusOK) status = replaceFile(path, *text);
    return status == kStatusOK ? std::nullopt : std::optional(fault(path, status));
}

}  // namespace halvane::hosting
