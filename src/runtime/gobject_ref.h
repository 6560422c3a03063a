#pragma once

#include <glib-object.h>
#include <utility>

namespace kelmo {

// Owns one reference to a GObject and drops it when destroyed.
template <typename T>
class GObjectRef {
public:
    GObjectRef() = default;

    // Takes over a reference the caller already owns (a "transfer full" result).
    static GObjectRef adopt(T* object) { return GObjectRef{object}; }

    // Adds a reference of its own; a floating reference is sunk instead.
    static GObjectRef retain(T* object) {
        if (object)
            g_object_ref_sink(object);
        return GObjectRef{object};
    }

    GObjectRef(GObjectRef&& other) noexcept : object_{std::exchange(other.object_, nullptr)} {}
    GObjectRef& operator=(GObjectRef&& other) noexcept {
        if (this != &other) {
            reset();
            object_ = std::exchange(other.object_, nullptr);
        }
        return *this;
    }
    GObjectRef(const GObjectRef&) = delete;
    GObjectRef& operator=(const GObjectRef&) = delete;
    ~GObjectRef() { reset(); }

    void reset() {
        if (object_)
            g_object_unref(std::exchange(object_, nullptr));
    }

    T* get() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

private:
    explicit GObjectRef(T* object) : object_{object} {}

    T* object_ = nullptr;
};

} // namespace kelmo
