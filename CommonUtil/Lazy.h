#pragma once
#include <cmath>
#include <type_traits>
#include <utility>

namespace CommonUtil
{

/// A value that is worked out when first asked for. `NotYetKnown` is the start value; a failed `_init` leaves it, so
/// that failure is not cached and the next call tries again. A start value of NaN is recognised as such.
template <typename T, T NotYetKnown>
class CLazy
{
public:
    /// The value, after `init(T&)` has filled it if need be; NotYetKnown when that returned false. The value that an
    /// `_init` throws through is NotYetKnown as well.
    template <typename Init>
    T Get(Init&& init)
    {
        if (!IsKnown())
        {
            T value = NotYetKnown;
            if (std::forward<Init>(init)(value))
                _value = value;
        }
        return _value;
    }
    bool IsKnown() const
    {
        if constexpr (std::is_floating_point_v<T>)
            return std::isnan(NotYetKnown) ? !std::isnan(_value) : _value != NotYetKnown;
        else
            return _value != NotYetKnown;
    }
    void Reset() { _value = NotYetKnown; }

private:
    T _value = NotYetKnown;
};

} // namespace CommonUtil
