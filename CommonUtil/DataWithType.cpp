#include "CommonUtil/DataWithType.h"

#include "CommonUtil/Text.h"

namespace CommonUtil
{

const char* DwtTypeName(DWT_TYPE::E type)
{
    switch (type)
    {
    case DWT_TYPE::DWT_INT:
        return "DWT_INT";
    case DWT_TYPE::DWT_UINT:
        return "DWT_UINT";
    case DWT_TYPE::DWT_SHORT:
        return "DWT_SHORT";
    case DWT_TYPE::DWT_USHORT:
        return "DWT_USHORT";
    case DWT_TYPE::DWT_INT64:
        return "DWT_INT64";
    case DWT_TYPE::DWT_UINT64:
        return "DWT_UINT64";
    case DWT_TYPE::DWT_FLOAT:
        return "DWT_FLOAT";
    case DWT_TYPE::DWT_DWORD:
        return "DWT_DWORD";
    case DWT_TYPE::DWT_DOUBLE:
        return "DWT_DOUBLE";
    case DWT_TYPE::DWT_CHAR:
        return "DWT_CHAR";
    case DWT_TYPE::DWT_UCHAR:
        return "DWT_UCHAR";
    case DWT_TYPE::DWT_WCHAR:
        return "DWT_WCHAR";
    case DWT_TYPE::DWT_BASEARRAY:
        return "DWT_BASEARRAY";
    }
    return nullptr;
}

CDataWithType::CDataWithType(int32_t value) : m_type(DWT_TYPE::DWT_INT)
{
    m_data.i = value;
}
CDataWithType::CDataWithType(uint32_t value) : m_type(DWT_TYPE::DWT_UINT)
{
    m_data.ui = value;
}
CDataWithType::CDataWithType(int16_t value) : m_type(DWT_TYPE::DWT_SHORT)
{
    m_data.si = value;
}
CDataWithType::CDataWithType(uint16_t value) : m_type(DWT_TYPE::DWT_USHORT)
{
    m_data.usi = value;
}
CDataWithType::CDataWithType(int64_t value) : m_type(DWT_TYPE::DWT_INT64)
{
    m_data.i64 = value;
}
CDataWithType::CDataWithType(uint64_t value) : m_type(DWT_TYPE::DWT_UINT64)
{
    m_data.ui64 = value;
}
CDataWithType::CDataWithType(float value) : m_type(DWT_TYPE::DWT_FLOAT)
{
    m_data.f = value;
}
CDataWithType::CDataWithType(unsigned long long value) : m_type(DWT_TYPE::DWT_DWORD)
{
    m_data.uDward = static_cast<unsigned long>(value);
}
CDataWithType::CDataWithType(double value) : m_type(DWT_TYPE::DWT_DOUBLE)
{
    m_data.d = value;
}
CDataWithType::CDataWithType(char value) : m_type(DWT_TYPE::DWT_CHAR)
{
    m_data.c = value;
}
CDataWithType::CDataWithType(unsigned char value) : m_type(DWT_TYPE::DWT_UCHAR)
{
    m_data.uc = value;
}
CDataWithType::CDataWithType(wchar_t value) : m_type(DWT_TYPE::DWT_WCHAR)
{
    m_data.wc = value;
}
CDataWithType::CDataWithType(std::unique_ptr<CBasicArray> array)
    : m_type(DWT_TYPE::DWT_BASEARRAY), _array(std::move(array))
{
}

void* CDataWithType::GetData()
{
    ZEL_ASSERT(DwtTypeName(m_type));
    if (m_type == DWT_TYPE::DWT_BASEARRAY)
        return _array.get();
    return &m_data;
}

std::string CDataWithType::NumberToString() const
{
    switch (m_type)
    {
    case DWT_TYPE::DWT_INT:
        return CommonUtil::ToString(m_data.i);
    case DWT_TYPE::DWT_UINT:
        return CommonUtil::ToString(m_data.ui);
    case DWT_TYPE::DWT_SHORT:
        return CommonUtil::ToString(int{m_data.si});
    case DWT_TYPE::DWT_USHORT:
        return CommonUtil::ToString(unsigned{m_data.usi});
    case DWT_TYPE::DWT_INT64:
        return CommonUtil::ToString(m_data.i64);
    case DWT_TYPE::DWT_UINT64:
        return CommonUtil::ToString(m_data.ui64);
    case DWT_TYPE::DWT_FLOAT:
        return CommonUtil::ToString(double{m_data.f});
    case DWT_TYPE::DWT_DWORD:
        return CommonUtil::ToString(m_data.uDward);
    case DWT_TYPE::DWT_DOUBLE:
        return CommonUtil::ToString(m_data.d);
    case DWT_TYPE::DWT_CHAR:
        return CommonUtil::ToString(int{m_data.c});
    case DWT_TYPE::DWT_UCHAR:
        return CommonUtil::ToString(int{m_data.uc});
    case DWT_TYPE::DWT_WCHAR:
        return A(std::wstring(1, m_data.wc));
    case DWT_TYPE::DWT_BASEARRAY:
        break;
    }
    return {};
}

std::string CDataWithType::ToString() const
{
    const char* name = DwtTypeName(m_type);
    if (!name)
        return "Unknown DWT_TYPE!!!";
    const std::string start = std::string("type=") + name;
    if (m_type != DWT_TYPE::DWT_BASEARRAY)
        return start + ", value = " + NumberToString();
    return start + ", size of each element = " + CommonUtil::ToString(_array ? _array->ElementSize() : 0u) +
           " bytes, num of eles = " + CommonUtil::ToString(_array ? _array->NumOfElements() : 0u);
}

} // namespace CommonUtil
