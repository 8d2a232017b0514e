// Records as the tool writes them in JSON.
#ifndef TESTS_SUPPORT_WRITTEN_JSON_H
#define TESTS_SUPPORT_WRITTEN_JSON_H

#include <nlohmann/json.hpp>
#include <string>

#include "tools/halvane/output/json_writer.h"

namespace halvane::testing {

// REQUIRES: the record's type has a writeJSON().
template <typename Record>
std::string jsonText(const Record& record,
                     tool::JSONWriter::Layout layout = tool::JSONWriter::Layout::OneLine) {
    tool::JSONWriter writer(layout);
    writeJSON(writer, record);
    return std::string(writer.text());
}

// The same, read back.
template <typename Record>
nlohmann::ordered_json jsonOf(const Record& record) {
    return nlohmann::ordered_json::parse(jsonText(record));
}

}  // namespace halvane::testing

#endif
