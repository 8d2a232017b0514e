// JSON members that are always the same, by a number of theirs.
//
// For one thread at a time.
#ifndef TOOLS_HALVANE_OUTPUT_CONSTANT_TEXTS_H
#define TOOLS_HALVANE_OUTPUT_CONSTANT_TEXTS_H

#include <cstddef>
#include <string>
#include <vector>

#include "tools/halvane/output/json_writer.h"

namespace halvane::tool {

class ConstantTexts {
  public:
    // `write` writes the members of the number the first time. Later they are copied.
    // REQUIRES: the numbers are small, the writer is that of the first call, and the object that is
    // open is as deep as then, and has a member.
    template <typename Write>
    void write(JSONWriter& writer, std::size_t number, Write write) {
        if (number >= texts_.size()) texts_.resize(number + 1);
        std::string& text = texts_[number];
        if (!text.empty()) return writer.verbatim(text);
        const std::size_t start = writer.text().size();
        write();
        text = writer.text().substr(start);
    }

  private:
    std::vector<std::string> texts_;
};

}  // namespace halvane::tool

#endif
