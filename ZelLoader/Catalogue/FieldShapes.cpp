#include "ZelLoader/Catalogue/FieldShapes.h"

#include <cstring>

namespace Zel
{

namespace
{

size_t SizeOfNumber(DWT_TYPE::E type)
{
    switch (type)
    {
    case DWT_TYPE::DWT_CHAR:
        return 1;
    case DWT_TYPE::DWT_INT:
        return 4;
    default:
        return 8;
    }
}

CDataWithType& DataOfType(CZelDataField& child, DWT_TYPE::E type)
{
    CDataWithType& data = dynamic_cast<CZelDataFieldForSimpleTypes&>(child).DataWithType();
    ZEL_ASSERT(data.GetType() == type);
    return data;
}

const CBasicArray& ArrayOf(CZelDataField& child, size_t eleSize)
{
    const CBasicArray* array = DataOfType(child, DWT_TYPE::DWT_BASEARRAY).Array();
    ZEL_ASSERT(array);
    // A view of larger elements than were read would reach behind them; of smaller ones it sees the first bytes.
    ZEL_ASSERT(array->ElementSize() >= eleSize || array->NumOfElements() == 0);
    return *array;
}

void AssertSameElements(const CBasicArray& left, const CBasicArray& right, size_t eleSize)
{
    ZEL_ASSERT(left.NumOfElements() == right.NumOfElements());
    ZEL_ASSERT(left.NumOfElements() == 0 || std::memcmp(left.Ptr(), right.Ptr(), left.NumOfElements() * eleSize) == 0);
}

} // namespace

const std::vector<std::unique_ptr<CZelDataField>>& CFieldOfNode::Children() const
{
    ZEL_ASSERT(Node->Type() == ZelDataFieldForVolume);
    return static_cast<const CZelDataFieldForVolume*>(Node)->Children();
}

CZelDataField* CFieldOfNode::OnlyChild(uint32_t tag) const
{
    CZelDataField* found = nullptr;
    for (const std::unique_ptr<CZelDataField>& child : Children())
    {
        if (child->Tag() != tag)
            continue;
        ZEL_ASSERT(!found);
        found = child.get();
    }
    return found;
}

CDataWithType* CFieldOfNode::Number(uint32_t tag, DWT_TYPE::E type) const
{
    CDataWithType* found = nullptr;
    for (const std::unique_ptr<CZelDataField>& child : Children())
    {
        if (child->Tag() != tag)
            continue;
        CDataWithType& number = DataOfType(*child, type);
        ZEL_ASSERT(!found || std::memcmp(found->GetData(), number.GetData(), SizeOfNumber(type)) == 0);
        if (!found)
            found = &number;
    }
    return found;
}

const CBasicArray* CFieldOfNode::Array(uint32_t tag, size_t eleSize) const
{
    const CBasicArray* found = nullptr;
    for (const std::unique_ptr<CZelDataField>& child : Children())
    {
        if (child->Tag() != tag)
            continue;
        const CBasicArray& array = ArrayOf(*child, eleSize);
        if (found)
            AssertSameElements(*found, array, eleSize);
        else
            found = &array;
    }
    return found;
}

std::vector<const CBasicArray*> CFieldOfNode::Arrays(uint32_t tag, size_t eleSize) const
{
    std::vector<const CBasicArray*> found;
    for (const std::unique_ptr<CZelDataField>& child : Children())
        if (child->Tag() == tag)
            found.push_back(&ArrayOf(*child, eleSize));
    return found;
}

} // namespace Zel
