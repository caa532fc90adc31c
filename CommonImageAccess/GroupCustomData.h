#pragma once
#include "Brix/AccessorInterface.h"

#include <optional>
#include <string>

namespace CIA
{

class CMultiDimImage;

/// The group custom data of one image: texts about how it is displayed, where its frame lies and how long it was
/// exposed.
class CGroupCustomData
{
public:
    explicit CGroupCustomData(CMultiDimImage& image) : _image(image) {}

    /// Looks an item up. AC_RESULT_INVALID_PARAM for an unknown name or missing parameters,
    /// AC_RESULT_PROPERTY_NOT_FOUND for what the document does not tell, AC_RESULT_FAILURE for a text that has no name
    /// here.
    AC_Result Get(const wchar_t* name, const AC_PARAM* params);
    /// The text to hand out; nothing when the caller's size is to be left as it is.
    const std::optional<std::string>& Text() const { return _text; }

private:
    AC_Result GetGroupType();
    AC_Result GetDisplayNumber(const wchar_t* name);
    AC_Result GetTransparency(const wchar_t* name);
    AC_Result GetPlaneUnit(const wchar_t* name);
    AC_Result GetPlaneText(const wchar_t* name);
    AC_Result GetFrameText(const wchar_t* name);
    AC_Result GetFrameUnit(const wchar_t* name);
    AC_Result GetAxis(const wchar_t* name);
    AC_Result GetExposureTime(const AC_PARAM* params);
    AC_Result GetNameOf(const char* text);

    CMultiDimImage& _image;
    std::optional<std::string> _text;
};

} // namespace CIA
