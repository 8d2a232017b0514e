#include "halvane/utils/text/owned_text.h"

#include <cstdlib>
#include <cstring>
#include <utility>

namespace {

// Frees a list of any length without recursion. `freeTexts` receives each node.
template <typename List, typename FreeTexts>
void freeList(List* list, FreeTexts freeTexts) {
    while (list != nullptr) {
        List* const node = std::exchange(list, list->next);
        freeTexts(*node);
        std::free(node);
    }
}

bool areEqual(const char* a, const char* b) {
    return a == b || (a != nullptr && b != nullptr && std::strcmp(a, b) == 0);
}

}  // namespace

void StringListFree(StringList* list) {
    freeList(list, [](const StringList& node) { std::free(node.text); });
}

void NameValueListFree(NameValueList* list) {
    freeList(list, [](const NameValueList& node) {
        std::free(node.name);
        std::free(node.value);
    });
}

int ReplaceDifferentString(char** text, const char* replacement) {
    if (areEqual(*text, replacement)) return 0;
    char* copy = nullptr;
    if (replacement != nullptr) {
        copy = strdup(replacement);
        if (copy == nullptr) return kStatusNoMemory;
    }
    std::free(std::exchange(*text, copy));
    return 1;
}
