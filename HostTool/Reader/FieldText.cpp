#include "HostTool/Reader/FieldText.h"

#include "HostTool/Reader/ReaderFile.h"
#include "HostTool/Text.h"
#include "ZelLoader/TagTree/SimpleFieldTypes.h"

#include <bit>

namespace HostTool
{

namespace
{

constexpr size_t MostNumbersTold = 8;
constexpr size_t MostCharactersTold = 100;

const char* NameOfElement(int32_t code)
{
    switch (code)
    {
    case Zel::SIMPLE_FIELD_CHAR:
        return "int8";
    case Zel::SIMPLE_FIELD_UCHAR:
        return "uint8";
    case Zel::SIMPLE_FIELD_SHORT:
        return "int16";
    case Zel::SIMPLE_FIELD_USHORT:
        return "uint16";
    case Zel::SIMPLE_FIELD_UINT:
    case Zel::SIMPLE_FIELD_DWORD:
        return "uint32";
    case Zel::SIMPLE_FIELD_INT64:
        return "int64";
    case Zel::SIMPLE_FIELD_INT64_TIME_STAMP:
        return "time";
    case Zel::SIMPLE_FIELD_UINT64:
        return "uint64";
    case Zel::SIMPLE_FIELD_FLOAT:
        return "float";
    case Zel::SIMPLE_FIELD_DOUBLE:
    case Zel::SIMPLE_FIELD_DOUBLE_DATETIME:
        return "double";
    case Zel::SIMPLE_FIELD_BOOL:
        return "bool";
    case Zel::SIMPLE_FIELD_ANSI_CHAR_ARR:
        return "ansi";
    default:
        return "int32";
    }
}

bool IsText(const Zel::CSimpleFieldType& type)
{
    return type.EleType == Zel::NONZELSPEC_SIMPLE_FIELD_TCHAR;
}

std::string NumberText(int32_t code, const uint8_t* bytes, size_t size)
{
    const uint64_t number = NumberOf(bytes, size);
    const std::string name = NameOfElement(code);
    if (name == "double")
        return TextOf(std::bit_cast<double>(number));
    if (name == "float")
        return TextOf(static_cast<double>(std::bit_cast<float>(static_cast<uint32_t>(number))));
    if (name == "bool")
        return number != 0 ? "true" : "false";
    if (name.starts_with("uint") || name == "ansi")
        return std::to_string(number);
    const auto unused = static_cast<unsigned>(64 - 8 * size);
    return std::to_string(static_cast<int64_t>(number << unused) >> unused);
}

std::string Quoted(std::span<const uint8_t> bytes, uint64_t size)
{
    std::wstring wide;
    for (size_t i = 0; i + 1 < bytes.size() && wide.size() < MostCharactersTold; i += 2)
        wide += static_cast<wchar_t>(NumberOf(&bytes[i], 2));
    const bool isCut = wide.size() * 2 + 1 < size;
    wide.erase(wide.find_last_not_of(L'\0') + 1);
    return '"' + Printable(ToUtf8(wide)) + '"' + (isCut ? " ... of " + std::to_string(size / 2) + " characters" : "");
}

} // namespace

std::string TypeTextOf(int32_t code, uint64_t size)
{
    const Zel::CSimpleFieldType* type = code < 0 ? nullptr : Zel::FindSimpleFieldType(code);
    if (!type)
        return "type " + std::to_string(code);
    if (IsText(*type))
        return "text";
    const uint64_t count = size / type->EleSize;
    return NameOfElement(type->EleType) + (count > 1 ? " x " + std::to_string(count) : std::string());
}

std::string ValueTextOf(int32_t code, std::span<const uint8_t> bytes, uint64_t size)
{
    const Zel::CSimpleFieldType* type = code < 0 ? nullptr : Zel::FindSimpleFieldType(code);
    if (type && IsText(*type))
        return Quoted(bytes, size);
    const size_t step = type ? type->EleSize : 1;
    const int32_t element = type ? type->EleType : Zel::SIMPLE_FIELD_UCHAR;
    std::string text;
    size_t count = 0;
    for (size_t at = 0; at + step <= bytes.size() && count < MostNumbersTold; at += step, ++count)
        text += (count == 0 ? "" : " ") + NumberText(element, &bytes[at], step);
    return count * step < size / step * step ? text + " ..." : text;
}

} // namespace HostTool
