#pragma once

#include <cstddef>
#include <new>
#include <utility>

namespace foundation::network::base {

/// An object that is never destroyed, to be used as a function-local static. So the destructors of other
/// static objects may use the library.
template <class T>
class NeverDestroyed {
public:
    template <class... Arguments>
    explicit NeverDestroyed(Arguments&&... arguments) {
        ::new (static_cast<void*>(storage)) T(std::forward<Arguments>(arguments)...);
    }
    NeverDestroyed(NeverDestroyed const&) = delete;
    NeverDestroyed& operator=(NeverDestroyed const&) = delete;
    ~NeverDestroyed() = default;

    T const& operator*() const noexcept { return *std::launder(reinterpret_cast<T const*>(storage)); }

private:
    alignas(T) std::byte storage[sizeof(T)];
};

} // namespace foundation::network::base
