#pragma once
#include "CommonUtil/BasicArray.h"

#include <cstdint>
#include <memory>
#include <string>

namespace CommonUtil
{

/// What a tagged value holds. The numbers are part of log texts and must not change.
struct DWT_TYPE
{
    enum E : int32_t
    {
        DWT_INT = 0,
        DWT_UINT = 1,
        DWT_SHORT = 2,
        DWT_USHORT = 3,
        DWT_INT64 = 4,
        DWT_UINT64 = 5,
        DWT_FLOAT = 6,
        DWT_DWORD = 7,
        DWT_DOUBLE = 8,
        DWT_CHAR = 9,
        DWT_UCHAR = 10,
        DWT_WCHAR = 11,
        DWT_BASEARRAY = 12
    };
};

/// The name of a type as it is written in this enumeration; null for a number that is none.
const char* DwtTypeName(DWT_TYPE::E type);

/// A tagged value: one number or one owned array.
class CDataWithType
{
public:
    explicit CDataWithType(int32_t value);
    explicit CDataWithType(uint32_t value);
    explicit CDataWithType(int16_t value);
    explicit CDataWithType(uint16_t value);
    explicit CDataWithType(int64_t value);
    explicit CDataWithType(uint64_t value);
    explicit CDataWithType(float value);
    explicit CDataWithType(unsigned long long value); ///< DWT_DWORD; the type `unsigned long` is DWT_UINT64's
    explicit CDataWithType(double value);
    explicit CDataWithType(char value);
    explicit CDataWithType(unsigned char value);
    explicit CDataWithType(wchar_t value);
    explicit CDataWithType(std::unique_ptr<CBasicArray> array);

    DWT_TYPE::E GetType() const { return m_type; }
    /// The address of the number, or the array itself (a `CBasicArray*`); it lives as long as this object. A type that
    /// is none is a failed assertion.
    void* GetData();
    /// The array of a DWT_BASEARRAY; null for a number.
    CBasicArray* Array() const { return _array.get(); }
    /// "type=<name>, value = <value>", or for an array its name, element size and count.
    std::string ToString() const;

private:
    union Number
    {
        int32_t i;
        uint32_t ui;
        int16_t si;
        uint16_t usi;
        int64_t i64;
        uint64_t ui64;
        float f;
        unsigned long uDward;
        double d;
        char c;
        unsigned char uc;
        wchar_t wc;
    };

    std::string NumberToString() const;

    DWT_TYPE::E m_type;
    Number m_data{};
    std::unique_ptr<CBasicArray> _array;
};

/// A tagged value under a name.
struct CDataWithNameAndType
{
    std::wstring Name;
    CDataWithType* Value = nullptr; ///< borrowed
};

} // namespace CommonUtil
