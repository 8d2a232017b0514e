// The value of an option: its source, and how each type stores it.
#include <bit>
#include <cstdlib>

#include "halvane/base/status.h"
#include "halvane/utils/cli/message_internal.h"
#include "halvane/utils/cli/parser_internal.h"

namespace halvane::cli {

namespace {

std::int32_t refuse(const CLIOption& option, std::uint32_t mode, const char* reason) {
    Message message;
    message.add("error: option ");
    if ((mode & kShortForm) != 0) {
        message.add("'%c' ", static_cast<int>(option.shortName));
    } else {
        message.add((mode & kNegated) != 0 ? "'no-%s' " : "'%s' ", option.longName);
    }
    message.add("%s.\n", reason);
    return kCLIUsageError;
}

template <typename Value>
void store(CLIOption& option, Value value) {
    if (option.valuePtr != nullptr) *static_cast<Value*>(option.valuePtr) = value;
}

const char* defaultText(const CLIOption& option) {
    return std::bit_cast<const char*>(option.defaultValue);
}

void clearString(CLIOption& option) {
    store<const char*>(option, nullptr);
}
std::int32_t storeString(CLIOption& option, std::uint32_t, const char* value) {
    store(option, value);
    return kStatusOK;
}
std::int32_t storeDefaultString(CLIOption& option) {
    return storeString(option, 0, defaultText(option));
}

void clearArray(CLIOption& option) {
    auto* const array = static_cast<char***>(option.valuePtr);
    auto* const count = static_cast<std::size_t*>(option.countPtr);
    if (array == nullptr || count == nullptr) return;
    StringArray_Free(*array, *count);
    *array = nullptr;
    *count = 0;
}
std::int32_t appendToArray(CLIOption& option, std::uint32_t, const char* value) {
    auto* const array = static_cast<char***>(option.valuePtr);
    auto* const count = static_cast<std::size_t*>(option.countPtr);
    if (array == nullptr || count == nullptr) return kStatusOK;
    if (StringArray_Append(array, count, value) != kStatusOK) return kCLINoMemory;
    return kStatusOK;
}
std::int32_t appendDefaultToArray(CLIOption& option) {
    return appendToArray(option, 0, defaultText(option));
}

// Signed and unsigned destinations receive the same 32 bits.
void storeInteger(CLIOption& option, std::int64_t value) {
    store(option, static_cast<std::uint32_t>(value));
}
void clearInteger(CLIOption& option) {
    storeInteger(option, 0);
}
std::int32_t convertInteger(CLIOption& option, std::uint32_t mode, const char* value) {
    const char* end = value;
    int error = 0;
    const auto number = StringToInteger64(value, INT32_MIN, UINT32_MAX, 0, &end, &error);
    if (error != 0 || end == value || *end != '\0') {
        return refuse(option, mode, "expects a numerical value");
    }
    storeInteger(option, number);
    return kStatusOK;
}
std::int32_t storeDefaultInteger(CLIOption& option) {
    storeInteger(option, static_cast<std::int64_t>(option.defaultValue));
    return kStatusOK;
}

// How each type that takes a text handles it.
struct Storage {
    void (*clear)(CLIOption& option);  // negated
    std::int32_t (*put)(CLIOption& option, std::uint32_t mode, const char* value);
    std::int32_t (*putDefault)(CLIOption& option);
};
constexpr Storage kString = {clearString, storeString, storeDefaultString};
constexpr Storage kStringArray = {clearArray, appendToArray, appendDefaultToArray};
constexpr Storage kInteger = {clearInteger, convertInteger, storeDefaultInteger};

// Returns the attached text, otherwise the next argument.
std::int32_t fetch(const CLIOption& option, std::uint32_t mode, const char*& value) {
    if (gState.attached != nullptr) {
        value = gState.attached;
        gState.attached = nullptr;
    } else if (char* const next = argumentAt(gArgI + 1)) {
        value = next;
        ++gArgI;
    } else {
        return refuse(option, mode, "requires a value");
    }
    return kStatusOK;
}

// An optional value is present only if it is attached.
bool isLeftOut(const CLIOption& option) {
    return hasFlag(option, kCLIOptionalValue) && gState.attached == nullptr;
}

std::int32_t take(const Storage& storage, CLIOption& option, std::uint32_t mode) {
    if ((mode & kNegated) != 0) {
        storage.clear(option);
        return kStatusOK;
    }
    if (isLeftOut(option)) return storage.putDefault(option);
    const char* value = nullptr;
    const std::int32_t status = fetch(option, mode, value);
    return status == kStatusOK ? storage.put(option, mode, value) : status;
}

std::int32_t count(CLIOption& option, bool isNegated) {
    auto* const counter = static_cast<std::uint32_t*>(option.valuePtr);
    if (counter != nullptr) *counter = isNegated ? 0 : *counter + 1;
    return kStatusOK;
}

std::int32_t call(CLIOption& option, std::uint32_t mode) {
    const bool isNegated = (mode & kNegated) != 0;
    const char* value = nullptr;
    gCLICurrentOption = &option;
    if (!isNegated && !takesNoValue(option) && !isLeftOut(option)) {
        const std::int32_t status = fetch(option, mode, value);
        if (status != kStatusOK) return status;
    }
    return option.callback != nullptr ? option.callback(&option, value, isNegated) : kStatusOK;
}

std::int32_t takeByType(CLIOption& option, std::uint32_t mode) {
    switch (option.type) {
        case kCLIBoolean:
            return count(option, (mode & kNegated) != 0);
        case kCLIString:
            return take(kString, option, mode);
        case kCLIStringArray:
            return take(kStringArray, option, mode);
        case kCLIInteger:
            return take(kInteger, option, mode);
        case kCLICallback:
            return call(option, mode);
        default:
            say("BUG: unknown option type %d\n", static_cast<int>(option.type));
            return kCLIUnknownType;
    }
}

}  // namespace

}  // namespace halvane::cli

extern "C" std::int32_t _CLIGetValue(CLIOption* option, std::uint32_t mode) {
    using namespace halvane::cli;
    const bool isNegated = (mode & kNegated) != 0;
    if (isNegated && hasFlag(*option, kCLINoNegation)) {
        return refuse(*option, mode & ~kNegated, "can't be negated");
    }
    const bool hasExcessValue = (mode & kShortForm) == 0 && gState.attached != nullptr &&
                                (isNegated || takesNoValue(*option));
    if (hasExcessValue) return refuse(*option, mode, "doesn't take a value");
    const std::int32_t status = takeByType(*option, mode);
    if (status == kStatusOK) option->flags |= kCLISeen;
    return status;
}
