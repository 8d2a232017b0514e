// A private folder of the test. It goes with everything in it when the test ends.
#ifndef TESTS_SUPPORT_TEMPORARY_FOLDER_H
#define TESTS_SUPPORT_TEMPORARY_FOLDER_H

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <stdlib.h>
#include <string>
#include <system_error>

namespace halvane::testing {

class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "halvane-XXXXXX").string();
        if (!::mkdtemp(name.data())) {
            throw std::system_error(errno, std::generic_category(), name);
        }
        path_ = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }

    // Writes a file and returns its path.
    std::string write(const std::string& name, std::span<const std::uint8_t> bytes) const {
        const auto file = path_ / name;
        std::ofstream stream(file, std::ios::binary);
        for (const std::uint8_t byte : bytes) stream.put(static_cast<char>(byte));
        return file.string();
    }

  private:
    std::filesystem::path path_;
};

}  // namespace halvane::testing

#endif
