#pragma once
#include "CommonImageAccess/DimensionType.h"

#include <string>

namespace CIA
{

// The units of the model: X, Y and Z in micrometres, L in nanometres, T in whole seconds (although the unit text of
// a T axis names milliseconds: hosts know it so). Each converts `value` from `units`, a text such as "10^-9m^1".
double ConvertToBrixXyDimUnits(double value, const std::wstring& units);
double ConvertToBrixZDimUnits(double value, const std::wstring& units);
double ConvertToBrixTDimUnits(double value, const std::wstring& units);
double ConvertToBrixLDimUnits(double value, const std::wstring& units);

/// One of the last three by `type`; any other type ends the process.
double ConvertToBrixUnits(double value, const std::wstring& units, DimensionType::E type);

} // namespace CIA
