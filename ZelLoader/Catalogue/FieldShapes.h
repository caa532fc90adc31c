#pragma once
#include "CommonUtil/ArrayStartAndSize.h"
#include "CommonUtil/BasicArray.h"
#include "CommonUtil/DataWithType.h"
#include "ZelLoader/Catalogue/NodeWrapper.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

// The shapes of the catalogue's accessors. Each is a member of a wrapper that is called like a function:
//
//     CScalarField<2023, int32_t> ImgDimMeaning{this, "ImgDimMeaning"};   ->   if (const int32_t* meaning =
//     x.ImgDimMeaning())
//
// All look among the children of the wrapper's node, which must be a volume (assertion). What was found is kept; what
// is absent is looked for again at the next call, except for lists, which are kept also when they are empty.

namespace Zel
{

/// The unit of a value that has one, and the value: a number, or the bytes of a table or a picture.
constexpr uint32_t TagOfUnit = 268435456;
constexpr uint32_t TagOfValue = 268435458;

/// What the shapes have in common: how children are looked for.
class CFieldOfNode
{
public:
    CFieldOfNode(const CFieldOfNode&) = delete;
    CFieldOfNode& operator=(const CFieldOfNode&) = delete;

protected:
    CFieldOfNode(CZelDataFieldNodeWrapper* owner, const CCatalogueRow& row) : Node(owner->Node)
    {
        if (owner->_CatalogueToFill)
            owner->_CatalogueToFill->Rows.push_back(row);
    }
    CFieldOfNode(CZelDataFieldNodeWrapper* owner, const char* nameOfSecondTag) : Node(owner->Node)
    {
        if (owner->_CatalogueToFill)
            owner->_CatalogueToFill->NameOfSecondTag = nameOfSecondTag;
    }
    ~CFieldOfNode() = default;

    /// The node's children, in file order.
    const std::vector<std::unique_ptr<CZelDataField>>& Children() const;
    /// The child with the tag; null when there is none. Asserts that there are not two.
    CZelDataField* OnlyChild(uint32_t tag) const;
    /// The number under the tag; null when there is none. Asserts its type, and that all fields with the tag hold the
    /// same bytes. A child that is no simple field raises std::bad_cast.
    CDataWithType* Number(uint32_t tag, DWT_TYPE::E type) const;
    /// Likewise for an array; also asserts the size of its elements.
    const CBasicArray* Array(uint32_t tag, size_t eleSize) const;
    /// Every array under the tag, in file order; they may differ.
    std::vector<const CBasicArray*> Arrays(uint32_t tag, size_t eleSize) const;

    CZelDataField* const Node;
};

/// How a number is stored in the tree.
template <typename T>
struct CStoredNumber;
template <>
struct CStoredNumber<int32_t>
{
    using Type = int32_t;
    static constexpr DWT_TYPE::E DwtType = DWT_TYPE::DWT_INT;
};
template <>
struct CStoredNumber<int64_t>
{
    using Type = int64_t;
    static constexpr DWT_TYPE::E DwtType = DWT_TYPE::DWT_INT64;
};
template <>
struct CStoredNumber<double>
{
    using Type = double;
    static constexpr DWT_TYPE::E DwtType = DWT_TYPE::DWT_DOUBLE;
};
template <>
struct CStoredNumber<bool>
{
    using Type = char;
    static constexpr DWT_TYPE::E DwtType = DWT_TYPE::DWT_CHAR;
};

/// One number: int32_t, int64_t, double or bool.
template <uint32_t Tag, typename T>
class CScalarField : private CFieldOfNode
{
public:
    CScalarField(CZelDataFieldNodeWrapper* owner, const char* accessor) : CFieldOfNode(owner, {Tag, Tag, accessor}) {}

    /// The number; null when it is absent. One that is repeated must repeat its value (assertion).
    const T* operator()()
    {
        if (!_value)
            if (CDataWithType* number = Number(Tag, CStoredNumber<T>::DwtType))
                _value = static_cast<T>(*static_cast<typename CStoredNumber<T>::Type*>(number->GetData()));
        return _value ? &*_value : nullptr;
    }

private:
    std::optional<T> _value;
};

/// An array of double, int32_t, uint32_t, bytes or characters.
template <uint32_t Tag, typename T>
class CArrayField : private CFieldOfNode
{
public:
    CArrayField(CZelDataFieldNodeWrapper* owner, const char* accessor) : CFieldOfNode(owner, {Tag, Tag, accessor}) {}

    /// A view of the node's elements; null when the field is absent. The kind of the elements is not verified, only
    /// that they have the right size (assertion). An array that is repeated must repeat its elements (assertion).
    CArrayStartAndSize<T>* operator()()
    {
        if (!_view)
            if (const CBasicArray* array = Array(Tag, sizeof(T)))
                _view.emplace(reinterpret_cast<T*>(array->Ptr()), array->NumOfElements());
        return _view ? &*_view : nullptr;
    }

private:
    std::optional<CArrayStartAndSize<T>> _view;
};

/// A text; the size of the view counts the terminating zero.
template <uint32_t Tag>
using CTextField = CArrayField<Tag, wchar_t>;

/// Every array under a tag.
template <uint32_t Tag, typename T>
class CArrayListField : private CFieldOfNode
{
public:
    CArrayListField(CZelDataFieldNodeWrapper* owner, const char* accessor) : CFieldOfNode(owner, {Tag, Tag, accessor})
    {
    }

    /// Views of the arrays, in file order; never null. Asserts the size of their elements, and nothing else.
    const std::vector<CArrayStartAndSize<T>>* operator()()
    {
        if (!_isKnown)
        {
            std::vector<CArrayStartAndSize<T>> views;
            for (const CBasicArray* array : Arrays(Tag, sizeof(T)))
                views.emplace_back(reinterpret_cast<T*>(array->Ptr()), array->NumOfElements());
            _views = std::move(views);
            _isKnown = true;
        }
        return &_views;
    }

private:
    std::vector<CArrayStartAndSize<T>> _views;
    bool _isKnown = false;
};

/// A child that occurs at most once.
template <uint32_t Tag, typename Wrapper>
class CChildField : private CFieldOfNode
{
public:
    CChildField(CZelDataFieldNodeWrapper* owner, const char* accessor)
        : CFieldOfNode(owner, {Tag, Tag, accessor, &CatalogueOf<Wrapper>})
    {
    }

    /// The child; null when it is absent. A second child with its tag is a failed assertion.
    Wrapper* operator()()
    {
        if (!_wrapper)
            if (CZelDataField* child = OnlyChild(Tag))
                _wrapper = std::make_unique<Wrapper>(child);
        return _wrapper.get();
    }

private:
    std::unique_ptr<Wrapper> _wrapper;
};

/// All children whose tags lie in a range.
template <uint32_t LowestTag, uint32_t HighestTag, typename Wrapper>
class CChildRangeField : private CFieldOfNode
{
public:
    using CWrappers = std::vector<std::unique_ptr<Wrapper>>;

    CChildRangeField(CZelDataFieldNodeWrapper* owner, const char* accessor)
        : CFieldOfNode(owner, {LowestTag, HighestTag, accessor, &CatalogueOf<Wrapper>})
    {
    }

    /// The children, in file order; never null.
    const CWrappers* operator()()
    {
        if (!_isKnown)
        {
            CWrappers wrappers;
            for (const std::unique_ptr<CZelDataField>& child : Children())
                if (child->Tag() >= LowestTag && child->Tag() <= HighestTag)
                    wrappers.push_back(std::make_unique<Wrapper>(child.get()));
            _wrappers = std::move(wrappers);
            _isKnown = true;
        }
        return &_wrappers;
    }

private:
    CWrappers _wrappers;
    bool _isKnown = false;
};

/// All children with a tag.
template <uint32_t Tag, typename Wrapper>
using CChildListField = CChildRangeField<Tag, Tag, Wrapper>;

/// The devices on an optical path. A child with tag 100 is looked at although it is none, and fails: files that hold
/// one were never valid.
template <typename Wrapper>
using CDeviceListField = CChildRangeField<0, CZelDeviceNode::TagBehindDevices, Wrapper>;

/// The node's own second tag.
class CSecondTagField : private CFieldOfNode
{
public:
    CSecondTagField(CZelDataFieldNodeWrapper* owner, const char* accessor) : CFieldOfNode(owner, accessor) {}

    /// Asserts that the node has one.
    uint32_t operator()() const
    {
        ZEL_ASSERT(Node->IsSecondTagPresent());
        return Node->SecondTag();
    }
};

} // namespace Zel
