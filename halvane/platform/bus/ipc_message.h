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
    // A message that holds nothing.
    IPCMessage() = default;

    explicit IPCMessage(PropertyListDictionary entries) : entries_(std::move(entries)) {}

    const PropertyListDictionary& entries() const { return entries_; }
    PropertyListDictionary& entries() { return entries_; }

    // One line an entry, "key = value", the entries of a nested dictionary or array indented by
    // four spaces below their own line; every line ends in a newline. What is deeper than
    // kPropertyListMaxDepth shows as kPropertyListTooDeepText. Absent for a message that holds
    // nothing.
    std::optional<std::string> description() const;

  private:
    PropertyListDictionary entries_;
};

}  // namespace halvane

#endif
