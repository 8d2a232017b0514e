// A message of the service protocol: a dictionary.
//
// Threads: one object follows the rules of a standard container.
#ifndef HALVANE_PLATFORM_BUS_IPC_MESSAGE_H
#define HALVANE_PLATFORM_BUS_IPC_MESSAGE_H

#include <optional>
#include <string>
#include <utility>

#include "halvane/base/export.h"
#include "halvane/base/property_list_value.h"

namespace halvane {

class HALVANE_EXPORT IPCMessage {
  public:
    // An empty message.
    IPCMessage() = default;

    // A message of these entries.
    explicit IPCMessage(PropertyListDictionary entries) : entries_(std::move(entries)) {}

    // The entries:
    const PropertyListDictionary& entries() const { return entries_; }
    PropertyListDictionary& entries() { return entries_; }

    // The message as text, with one line per entry: "key = value". The entries of a nested
    // dictionary or array follow their own line, indented by four spaces. Every line ends in a
    // newline. Values deeper than kPropertyListMaxDepth show as kPropertyListTooDeepText. Absent
    // for an empty message.
    std::optional<std::string> description() const;

  private:
    PropertyListDictionary entries_;
};

}  // namespace halvane

#endif
