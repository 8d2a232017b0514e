// Foreign objects among property-list values.
#ifndef HALVANE_BASE_PROPERTY_LIST_OBJECT_H
#define HALVANE_BASE_PROPERTY_LIST_OBJECT_H

#include <optional>
#include <string>

#include "halvane/base/export.h"

namespace halvane {

// An object that is no property-list kind. It prints, but has no XML form.
class HALVANE_EXPORT PropertyListObject {
  public:
    virtual ~PropertyListObject() = default;

    // The object's own text; absent when it has none.
    virtual std::optional<std::string> description() const = 0;

    // What tells its type where it has no text.
    virtual int typeNumber() const = 0;
};

}  // namespace halvane

#endif
