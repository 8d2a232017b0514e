#include "tools/halvane/input/capture_files.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <system_error>

#include "halvane/utils/text/natural_order.h"

#include "tools/halvane/input/capture_format.h"
#include "tools/halvane/input/input_stream.h"

namespace halvane::tool {

namespace {

namespace fs = std::filesystem;

// Names that differ in case alone have an order too.
bool isBefore(const std::string& a, const std::string& b) {
    const int order = TextCompareNatural(a.data(), a.size(), b.data(), b.size(), false);
    return order != 0 ? order < 0 : a < b;
}

bool isVisibleFile(const fs::directory_entry& entry) {
    std::error_code ignored;
    return !entry.path().filename().string().starts_with('.') && entry.is_regular_file(ignored);
}

bool mayBeCapture(const std::string& path) {
    std::error_code ignored;
    if (fs::file_size(path, ignored) == 0) return false;
    auto stream = InputStream::open(path);
    return !stream || captureFormat(*stream).has_value();
}

std::vector<std::string> filesIn(const std::string& folder, std::error_code& error) {
    std::vector<std::string> names;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (isVisibleFile(*entry)) names.push_back(entry->path().filename().string());
    }
    std::ranges::sort(names, isBefore);
    return names;
}

void addFolder(const std::string& folder, CaptureFiles& found) {
    std::error_code error;
    std::size_t captures = 0, others = 0;
    for (const std::string& name : filesIn(folder, error)) {
        const std::string path = (fs::path(folder) / name).string();
        const bool isCapture = mayBeCapture(path);
        if (isCapture) found.paths.push_back(path);
        ++(isCapture ? captures : others);
    }
    if (error) {
        found.faults.push_back(folder + ": " + error.default_error_condition().message());
    } else if (captures == 0) {
        found.faults.push_back(folder + ": the folder has no captures");
    }
    if (others > 0) {
        found.notes.push_back(folder + ": " + std::to_string(others) +
                              (others == 1 ? " file is no capture and is passed over"
                                           : " files are no captures and are passed over"));
    }
}

}  // namespace

CaptureFiles findCaptureFiles(std::span<const std::string> arguments) {
    CaptureFiles found;
    for (const std::string& argument : arguments) {
        std::error_code ignored;
        const bool isFolder = argument != "-" && fs::is_directory(argument, ignored);
        isFolder ? addFolder(argument, found) : found.paths.push_back(argument);
    }
    return found;
}

}  // namespace halvane::tool
