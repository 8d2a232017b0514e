// Foreign objects inside property-list values.
#ifndef HALVANE_BASE_PROPERTY_LIST_OBJECT_H
#define HALVANE_BASE_PROPERTY_LIST_OBJECT_H

#include <optional>
#include <string>

#include "halvane/base/cxx20.h"
#include "halvane/base/export.h"

namespace halvane {

// An object of a kind that property lists lack. It can be printed but has no XML form.
class HALVANE_EXPORT PropertyListObject {
  public:
    virtual ~PropertyListObject() = default;

    // The object's own text; absent if it has none.
    virtual std::optional<std::string> description() const = 0;

    // A number for the object's type, for objects without a text.
    virtual int typeNumber() const = 0;
};

}  // namespace halvane

#endif
