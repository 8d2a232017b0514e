#include "halvane/utils/scan/scanf.h"

#include <algorithm>
#include <bitset>
#include <climits>
#include <cstdint>
#include <cstring>

#include "halvane/base/ascii_internal.h"

using halvane::digitValue;
using halvane::isDigit;
using halvane::isSpace;

namespace {

enum class Size { Default, Bits8, Bits16, Bits64 };

struct Directive {
    bool isSuppressed = false;
    bool isInPlace = false;
    bool allowsEmpty = false;
    bool hasWidth = false;
    std::size_t width = INT_MAX;
    Size size = Size::Default;
};

template <typename Integer>
void storeAs(void* destination, std::uint64_t value) {
    // The caller's object may be signed or unsigned, and there is more than one 64-bit type.
    const auto cut = static_cast<Integer>(value);
    std::memcpy(destination, &cut, sizeof cut);
}

void store(void* destination, std::uint64_t value, Size size) {
    switch (size) {
        case Size::Default:
            return storeAs<std::uint32_t>(destination, value);
        case Size::Bits8:
            return storeAs<std::uint8_t>(destination, value);
        case Size::Bits16:
            return storeAs<std::uint16_t>(destination, value);
        case Size::Bits64:
            return storeAs<std::uint64_t>(destination, value);
    }
}

// One call of VSNScanF. A function that returns bool returns whether scanning continues.
class Scanner {
  public:
    // The input ends at the first NUL, or after `length` characters.
    Scanner(const char* input, std::size_t length, const char* format, va_list arguments)
        : begin_(input), at_(input), left_(length), format_(format) {
        va_copy(arguments_, arguments);
    }
    ~Scanner() { va_end(arguments_); }
    Scanner(const Scanner&) = delete;
    Scanner& operator=(const Scanner&) = delete;

    int scan() {
        while (*format_ != '\0' && element()) {
        }
        return assigned_;
    }

  private:
    bool element() {
        if (isSpace(*format_)) {
            while (isSpace(*format_)) ++format_;
            skipSpace();
            return true;
        }
        if (*format_ != '%') return literal(*format_++);
        ++format_;
        Directive directive;
        readFlags(directive);
        if (!readWidth(directive)) return false;
        readSize(directive);
        return convert(directive);
    }

    void readFlags(Directive& directive) {
        for (;; ++format_) {
            if (*format_ == '*') {
                directive.isSuppressed = true;
            } else if (*format_ == '&') {
                directive.isInPlace = true;
            } else if (*format_ == '#') {
                directive.allowsEmpty = true;
            } else {
                return;
            }
        }
    }

    bool readWidth(Directive& directive) {
        if (*format_ == '.') {
            ++format_;
            const int width = va_arg(arguments_, int);
            if (width < 0) return false;
            directive.hasWidth = true;
            directive.width = static_cast<std::size_t>(width);
        } else if (isDigit(*format_)) {
            directive.hasWidth = true;
            directive.width = 0;
            for (; isDigit(*format_); ++format_) {
                const std::size_t width = directive.width * 10 + digitValue(*format_);
                directive.width = std::min<std::size_t>(width, INT_MAX);
            }
        }
        return true;
    }

    void readSize(Directive& directive) {
        switch (*format_) {
            case 'h':
                ++format_;
                directive.size = *format_ == 'h' ? Size::Bits8 : Size::Bits16;
                if (*format_ == 'h') ++format_;
                return;
            case 'l':
                ++format_;
                directive.size = Size::Bits64;
                if (*format_ == 'l') ++format_;
                return;
            case 'j':
            case 't':
            case 'z':
                ++format_;
                directive.size = Size::Bits64;
                return;
            default:
                return;
        }
    }

    bool convert(Directive& directive) {
        // Stops at the terminator, which is not a conversion.
        const char conversion = *format_ == '\0' ? '\0' : *format_++;
        switch (conversion) {
            case 'd':
            case 'u':
                return integer<10>(directive);
            case 'o':
                return integer<8>(directive);
            case 'x':
            case 'X':
                return integer<16>(directive);
            case 'p':
                directive.size = Size::Bits64;
                return integer<16>(directive);
            case 'b':
                return integer<2>(directive);
            case 'i':
                return integer<kDetectBase>(directive);
            case 'c':
                return characters(directive);
            case 's':
                return word(directive);
            case '[':
                return charactersOfSet(directive);
            case 'n':
                return consumedCount(directive);
            case '%':
                return literal('%');
            default:
                return false;
        }
    }

    static constexpr unsigned kDetectBase = 0;

    void consume(std::size_t count) {
        at_ += count;
        left_ -= count;
    }

    void skipSpace() {
        while (left_ > 0 && isSpace(*at_)) consume(1);
    }

    bool literal(char character) {
        if (left_ == 0 || *at_ != character) return false;
        consume(1);
        return true;
    }

    // The field at the current position. It ends after `room` characters or at a NUL, whichever
    // comes first; nothing after that is read.
    struct Field {
        const char* text;
        std::size_t room;

        bool isDigit(std::size_t offset, unsigned base) const {
            return offset < room && digitValue(text[offset]) < base;
        }
        void skip(std::size_t count) {
            text += count;
            room -= count;
        }
    };
    Field fieldOf(const Directive& directive) const {
        return {at_, std::min(directive.width, left_)};
    }

    // Returns the length of the field's part before the first character for which `isPart` is
    // false.
    // REQUIRES: isPart('\0') is false
    template <typename IsPart>
    static std::size_t lengthOf(const Field& field, IsPart isPart) {
        std::size_t length = 0;
        while (length < field.room && isPart(field.text[length])) ++length;
        return length;
    }

    static bool hasPrefix(const Field& field, char letter, unsigned base) {
        return field.isDigit(0, 1) && field.room > 1 && (field.text[1] | 0x20) == letter &&
               field.isDigit(2, base);
    }

    // Skips the prefix of the base. Returns the base, which the prefix may determine.
    template <unsigned kBase>
    static unsigned readBase(Field& field) {
        if constexpr (kBase == 16 || kBase == kDetectBase) {
            if (hasPrefix(field, 'x', 16)) {
                field.skip(2);
                return 16;
            }
        }
        if constexpr (kBase == 2 || kBase == kDetectBase) {
            if (hasPrefix(field, 'b', 2)) {
                field.skip(2);
                return 2;
            }
        }
        if constexpr (kBase == kDetectBase) {
            return field.isDigit(0, 1) && field.isDigit(1, 8) ? 8 : 10;
        }
        return kBase;
    }

    template <unsigned kBase>
    bool integer(const Directive& directive) {
        skipSpace();
        Field field = fieldOf(directive);
        const bool isNegative = field.room >= 2 && *field.text == '-';
        if (isNegative || (field.room >= 2 && *field.text == '+')) field.skip(1);
        const unsigned base = readBase<kBase>(field);
        if (!field.isDigit(0, base)) return false;
        std::uint64_t value = 0;
        for (; field.isDigit(0, base); field.skip(1)) {
            value = value * base + digitValue(*field.text);
        }
        consume(static_cast<std::size_t>(field.text - at_));
        return assign(isNegative ? 0 - value : value, directive);
    }

    bool assign(std::uint64_t value, const Directive& directive) {
        if (directive.isSuppressed) return true;
        void* const destination = va_arg(arguments_, void*);
        if (destination == nullptr) return false;
        store(destination, value, directive.size);
        ++assigned_;
        return true;
    }

    bool characters(const Directive& directive) {
        const std::size_t unbounded = directive.isInPlace ? left_ : 1;
        const std::size_t wanted = directive.hasWidth ? directive.width : unbounded;
        const std::size_t count = strnlen(at_, std::min(wanted, left_));
        if (count < wanted && !directive.isInPlace) return false;
        return assignText(count, directive, Ending::Bare);
    }

    bool word(const Directive& directive) {
        skipSpace();
        const auto isInWord = [](char next) { return next != '\0' && !isSpace(next); };
        return assignText(lengthOf(fieldOf(directive), isInWord), directive, Ending::Terminated);
    }

    bool charactersOfSet(const Directive& directive) {
        if (directive.size != Size::Default) return false;
        const bool isInverted = *format_ == '^';
        if (isInverted) ++format_;
        const char* const set = format_;
        if (*set == '\0') return false;
        const char* const setEnd = std::strchr(set + 1, ']');
        if (setEnd == nullptr) return false;
        format_ = setEnd + 1;

        std::bitset<UCHAR_MAX + 1> wanted;
        for (const char* at = set; at != setEnd; ++at) wanted.set(static_cast<unsigned char>(*at));
        if (isInverted) wanted.flip();
        wanted.reset(0);
        const auto isInSet = [&wanted](char next) {
            return wanted[static_cast<unsigned char>(next)];
        };
        return assignText(lengthOf(fieldOf(directive), isInSet), directive, Ending::Terminated);
    }

    enum class Ending { Bare, Terminated };

    // Consumes `size` characters and stores them.
    bool assignText(std::size_t size, const Directive& directive, Ending ending) {
        const char* const text = at_;
        if (size == 0 && !directive.allowsEmpty) return false;
        consume(size);
        if (directive.isSuppressed) return true;
        if (!(directive.isInPlace ? pointAt(text, size) : copy(text, size, ending))) return false;
        ++assigned_;
        return true;
    }

    bool pointAt(const char* text, std::size_t size) {
        if (auto** const pointer = va_arg(arguments_, const char**)) *pointer = text;
        if (auto* const length = va_arg(arguments_, std::size_t*)) *length = size;
        return true;
    }

    bool copy(const char* text, std::size_t size, Ending ending) {
        char* const destination = va_arg(arguments_, char*);
        if (destination == nullptr) return false;
        std::copy_n(text, size, destination);
        if (ending == Ending::Terminated) destination[size] = '\0';
        return true;
    }

    bool consumedCount(const Directive& directive) {
        if (directive.isSuppressed || directive.hasWidth || directive.size != Size::Default) {
            return false;
        }
        void* const destination = va_arg(arguments_, void*);
        if (destination == nullptr) return false;
        store(destination, static_cast<std::uint64_t>(at_ - begin_), Size::Default);
        return true;
    }

    const char* begin_;
    const char* at_;
    std::size_t left_;  // at most; a NUL may come earlier
    const char* format_;
    va_list arguments_;
    int assigned_ = 0;
};

}  // namespace

int VSNScanF(const char* text, size_t length, const char* format, va_list arguments) {
    if (format == nullptr) return 0;
    return Scanner(text != nullptr ? text : "", length, format, arguments).scan();
}

int SNScanF(const char* text, size_t length, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int assigned = VSNScanF(text, length, format, arguments);
    va_end(arguments);
    return assigned;
}
