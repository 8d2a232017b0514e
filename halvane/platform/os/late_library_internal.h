// Shared libraries that are loaded when they are first used, so that programs and commands that do
// without one start without it, and without the libraries behind it. A table has the functions:
//
//     #define HALVANE_LIBPCAP_FUNCTIONS(FUNCTION) FUNCTION(pcap_close) FUNCTION(pcap_create)
//     HALVANE_LATE_LIBRARY(Libpcap, libpcap, "libpcap.so.0.8", HALVANE_LIBPCAP_FUNCTIONS)
//
// declares the function libpcap(), which loads the library the first time, and returns the table:
// libpcap().pcap_close(capture). A library stays loaded.
//
// Without the library, or if it lacks one of the functions, `problem` of the table says so, and all
// functions fail: those that return int return -ELIBACC, and the others zero or null.
//
// Threads: any thread may make any call.
#ifndef HALVANE_PLATFORM_OS_LATE_LIBRARY_INTERNAL_H
#define HALVANE_PLATFORM_OS_LATE_LIBRARY_INTERNAL_H

#include <cerrno>
#include <type_traits>

namespace halvane {

class LateLibrary {
  public:
    // Loads the library of this name.
    explicit LateLibrary(const char* name);
    LateLibrary(const LateLibrary&) = delete;
    LateLibrary& operator=(const LateLibrary&) = delete;
    ~LateLibrary();

    // Null if there is no such function. The first problem is kept.
    void* find(const char* function);

    // Null if nothing is missing. Otherwise text that is valid as long as this object:
    // "libpcap.so.0.8: cannot open shared object file: No such file or directory".
    const char* problem() const;

    // The same text, which then stays valid.
    const char* takeProblem();

  private:
    void keepProblem();

    void* const handle_;
    bool isMissing_ = false;
    char* problem_ = nullptr;  // owned; null also if memory did not hold it
};

// What stands for a function that is missing.
template <typename Value>
Value missingValue() {
    if constexpr (std::is_same_v<Value, int>) {
        return -ELIBACC;
    } else {
        return Value();
    }
}
template <typename Value, typename... Arguments>
Value callMissing(Arguments...) noexcept {
    return missingValue<Value>();
}
template <typename Value, typename... Arguments>
Value callMissingVariadic(Arguments..., ...) noexcept {
    return missingValue<Value>();
}
template <typename Value, typename... Arguments, bool isNoexcept>
void makeMissing(Value (*&function)(Arguments...) noexcept(isNoexcept)) {
    function = callMissing<Value, Arguments...>;
}
template <typename Value, typename... Arguments, bool isNoexcept>
void makeMissing(Value (*&function)(Arguments..., ...) noexcept(isNoexcept)) {
    function = callMissingVariadic<Value, Arguments...>;
}
// Data has no stand-in.
template <typename Data>
requires(!std::is_function_v<Data>) void makeMissing(Data*& data) {
    data = nullptr;
}

template <typename Function>
void findLate(LateLibrary& library, const char* name, Function*& function) {
    function = reinterpret_cast<Function*>(library.find(name));
}

}  // namespace halvane

// A declaration needs no parentheses. NOLINTNEXTLINE(bugprone-macro-parentheses)
#define HALVANE_LATE_MEMBER(function) decltype(&::function) function;
#define HALVANE_LATE_FIND(function) ::halvane::findLate(library, #function, table.function);
#define HALVANE_LATE_MISSING(function) ::halvane::makeMissing(table.function);

#define HALVANE_LATE_LIBRARY(Table, accessor, name, FUNCTIONS)     \
    struct Table {                                                 \
        const char* problem = nullptr; /* null if all are there */ \
        FUNCTIONS(HALVANE_LATE_MEMBER)                             \
    };                                                             \
    inline const Table& accessor() {                               \
        static const Table functions = [] {                        \
            ::halvane::LateLibrary library(name);                  \
            Table table{};                                         \
            FUNCTIONS(HALVANE_LATE_FIND)                           \
            table.problem = library.takeProblem();                 \
            if (table.problem) {                                   \
                FUNCTIONS(HALVANE_LATE_MISSING)                    \
            }                                                      \
            return table;                                          \
        }();                                                       \
        return functions;                                          \
    }

#endif
