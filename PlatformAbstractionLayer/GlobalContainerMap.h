#pragma once
#include "CommonUtil/Mutex.h"

#include <functional>
#include <map>
#include <optional>
#include <utility>

/// A map that several threads share: each single call is one step.
template <typename Key, typename Value>
class CMN_CGlobalContainerMap
{
public:
    using Map = std::map<Key, Value, std::less<>>;

    /// False when the key is there already: it keeps its value.
    bool Insert(Key key, Value value)
    {
        const CommonUtil::CLock lock(_mutex);
        return _map.emplace(std::move(key), std::move(value)).second;
    }
    /// A copy of the value; nothing when the key is not there.
    template <typename KeyLike>
    std::optional<Value> GetAt(const KeyLike& key)
    {
        const CommonUtil::CLock lock(_mutex);
        const auto found = _map.find(key);
        return found == _map.end() ? std::nullopt : std::optional<Value>(found->second);
    }
    template <typename KeyLike>
    bool Search(const KeyLike& key)
    {
        const CommonUtil::CLock lock(_mutex);
        return _map.find(key) != _map.end();
    }
    /// False when the key is not there.
    bool Erase(const Key& key)
    {
        const CommonUtil::CLock lock(_mutex);
        return _map.erase(key) != 0;
    }
    void Clear()
    {
        const CommonUtil::CLock lock(_mutex);
        _map.clear();
    }
    /// All that is there now.
    Map Copy()
    {
        const CommonUtil::CLock lock(_mutex);
        return _map;
    }

private:
    CommonUtil::CMyMutex _mutex;
    Map _map;
};
