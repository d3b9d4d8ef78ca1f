#pragma once

#include <type_traits>

// Marks the containers that delete the objects their elements point to. Copies made into such a container
// must clone the objects, or two containers would delete the same one.
class QvOwningContainer {};

// A copy of a pointed-to object for an owning destination; null stays null. Element types that cannot be
// copied (abstract classes, void) are handed over as they are.
template <class T> T QvCloneElement(const T& element) {
    if constexpr (std::is_pointer_v<T>) {
        using Object = std::remove_cv_t<std::remove_pointer_t<T>>;
        if constexpr (std::is_object_v<Object> && std::is_copy_constructible_v<Object>) {
            return element ? new Object(*element) : nullptr;
        }
    }
    return element;
}
