#pragma once
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>

namespace CommonUtil
{

/// Objects by number, each made on first request at an address that it keeps. They stand in pages of 64 neighbours,
/// so that a million of them costs little more than their own size, and a few far apart cost a page each.
template <typename T>
class CPagedObjects
{
public:
    /// The object of that number; `make(std::optional<T>&)` emplaces it when it is not there yet.
    template <typename Make>
    T& GetOrMake(uint32_t number, Make&& make)
    {
        std::unique_ptr<Page>& page = _pages[number / PageSize];
        if (!page)
            page = std::make_unique<Page>();
        std::optional<T>& slot = (*page)[number % PageSize];
        if (!slot)
            std::forward<Make>(make)(slot);
        return *slot;
    }

private:
    static constexpr uint32_t PageSize = 64;
    using Page = std::array<std::optional<T>, PageSize>;

    std::unordered_map<uint32_t, std::unique_ptr<Page>> _pages;
};

} // namespace CommonUtil
