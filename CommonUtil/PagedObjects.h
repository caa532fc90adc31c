#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <unordered_map>
#include <utility>
#include <vector>

namespace CommonUtil
{

/// Objects by number, each made on demand at an address that it keeps. They stand in pages of 64 neighbours, so that a
/// million of them costs little more than their own size, and a few far apart cost a page each. The pages of the first
/// four million numbers are found by their place in a list, which is as long as the highest of them; those behind are
/// few, or nobody's, and found by a map.
template <typename T>
class CPagedObjects
{
public:
    /// The object of that number; null when it has not been made.
    T* Find(uint32_t number)
    {
        const uint32_t pageNumber = number / PageSize;
        if (pageNumber >= _nearPages.size()) [[unlikely]]
            return pageNumber < MaxNumOfNearPages ? nullptr : FindFar(number);
        CPage* page = _nearPages[pageNumber].get();
        return page ? page->Find(number % PageSize) : nullptr;
    }

    /// Makes the object of that number, which must not be there yet.
    template <typename... Arguments>
    T& Emplace(uint32_t number, Arguments&&... arguments)
    {
        std::unique_ptr<CPage>& page = PlaceOfPage(number / PageSize);
        if (!page)
            page = std::make_unique_for_overwrite<CPage>(); // clearing its room would cost more than the rest
        return page->Emplace(number % PageSize, std::forward<Arguments>(arguments)...);
    }

private:
    static constexpr uint32_t PageSize = 64;
    static constexpr uint32_t MaxNumOfNearPages = 65536;

    /// Room for 64 objects, and a bit for each one that has been made.
    class CPage
    {
    public:
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): objects are made in the room one by one
        CPage() = default;
        ~CPage()
        {
            for (uint32_t i = 0; i < PageSize; ++i)
                if (T* object = Find(i))
                    std::destroy_at(object);
        }
        CPage(const CPage&) = delete;
        CPage& operator=(const CPage&) = delete;

        T* Find(uint32_t place)
        {
            return _isMade >> place & 1 ? std::launder(reinterpret_cast<T*>(&_room[place])) : nullptr;
        }

        template <typename... Arguments>
        T& Emplace(uint32_t place, Arguments&&... arguments)
        {
            T* object = std::construct_at(reinterpret_cast<T*>(&_room[place]), std::forward<Arguments>(arguments)...);
            _isMade |= uint64_t{1} << place;
            return *object;
        }

    private:
        struct alignas(T) CRoom
        {
            std::byte Bytes[sizeof(T)];
        };

        std::array<CRoom, PageSize> _room;
        uint64_t _isMade = 0;
    };

    T* FindFar(uint32_t number)
    {
        const auto page = _farPages.find(number / PageSize);
        return page == _farPages.end() ? nullptr : page->second->Find(number % PageSize);
    }

    std::unique_ptr<CPage>& PlaceOfPage(uint32_t pageNumber)
    {
        if (pageNumber >= MaxNumOfNearPages)
            return _farPages[pageNumber];
        if (pageNumber >= _nearPages.size())
            _nearPages.resize(size_t{pageNumber} + 1);
        return _nearPages[pageNumber];
    }

    std::vector<std::unique_ptr<CPage>> _nearPages; ///< null where no page has been made
    std::unordered_map<uint32_t, std::unique_ptr<CPage>> _farPages;
};

} // namespace CommonUtil
