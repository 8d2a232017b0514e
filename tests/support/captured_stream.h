// Redirects a standard stream of this process into a file until the object goes out of scope.
#ifndef TESTS_SUPPORT_CAPTURED_STREAM_H
#define TESTS_SUPPORT_CAPTURED_STREAM_H

#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>
#include <unistd.h>

namespace halvane::testing {

class CapturedStream {
  public:
    explicit CapturedStream(std::FILE* stream)
        : stream_(stream), file_(std::tmpfile()), saved_(::dup(::fileno(stream))) {
        std::fflush(stream_);
        if (file_ == nullptr || saved_ < 0 || ::dup2(::fileno(file_), ::fileno(stream_)) < 0) {
            throw std::system_error(errno, std::generic_category(), "capturing a stream");
        }
    }
    CapturedStream(const CapturedStream&) = delete;
    CapturedStream& operator=(const CapturedStream&) = delete;
    ~CapturedStream() {
        std::fflush(stream_);
        ::dup2(saved_, ::fileno(stream_));
        ::close(saved_);
        std::fclose(file_);
    }

    // Everything written so far.
    std::string text() const {
        std::fflush(stream_);
        std::string text;
        char part[4096];
        ssize_t length = 0;
        while ((length = ::pread(::fileno(file_), part, sizeof(part),
                                 static_cast<off_t>(text.size()))) > 0) {
            text.append(part, static_cast<std::size_t>(length));
        }
        return text;
    }

  private:
    std::FILE* stream_;
    std::FILE* file_;
    int saved_;
};

}  // namespace halvane::testing

#endif
