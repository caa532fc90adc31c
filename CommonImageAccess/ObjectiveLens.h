#pragma once

namespace CIA
{

/// The lens an image was taken with. Texts live as long as the document; what is not known is 0 or an empty text.
class CObjectiveLens
{
public:
    virtual ~CObjectiveLens() = default;

    virtual const wchar_t* Name() = 0;
    virtual double Magnification() = 0;
    virtual const wchar_t* ImmersionMedium() = 0;
    virtual double NumericalAperture() = 0;
    virtual double WorkingDistance() = 0;
    virtual const wchar_t* WorkingDistanceUnits() = 0; ///< a unit text such as "10^-3m^1"
    virtual double RefractiveIndex() = 0;
};

} // namespace CIA
