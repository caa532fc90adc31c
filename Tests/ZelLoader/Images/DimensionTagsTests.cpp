// Z, T and lambda as the dimension tags of an image tell them: their meaning, start and step.

#include "Tests/ZelLoader/Images/ZelSlide.h"

using namespace SlideOfTest;

namespace
{

const std::string UnitsDiffer = "WARNING: unexpected: original z-start & z-step units differ!";
const std::string NoStepOfZ = "Warning: Tag 'imgZStep' absent or has value '0' which is illogical for evenly spaced "
                              "frames! Also imgZStart is present with value=5.000000!";
const std::string NoStepOfT = "WARNING: imgTStep is 0! Considering that this consciously specifies that T dimension "
                              "has frames unevenly spaced in it...";
const std::string StepWithoutStart = "Warning : Start and Unit's are absent for Dimensition ";
const std::string ButStepIsPresent = " but Step is Present";
const std::string StepIsZero = "Warnign! . If the step value is zero then we need to calculate the points by reading "
                               "the framesBut it is one because the number of point is may be 1 (number of point is "
                               "present at tag number 2007";

constexpr const char* Micrometres = "10^-6m^1";
constexpr const char* Nanometres = "10^-9m^1";
constexpr const char* Milliseconds = "10^-3s^1";

CStackDimension Tagged(DimensionMeaning::E meaning, uint32_t numOfPoints, std::optional<double> start,
                       std::string startUnit, std::optional<double> step, std::string stepUnit)
{
    CStackDimension dimension;
    dimension.Meaning = meaning;
    dimension.NumOfPoints = numOfPoints;
    dimension.Start = start;
    dimension.StartUnit = std::move(startUnit);
    dimension.Step = step;
    dimension.StepUnit = std::move(stepUnit);
    return dimension;
}

CStackDimension Z(uint32_t count, std::optional<double> start, std::string startUnit, std::optional<double> step,
                  std::string stepUnit)
{
    return Tagged(DimensionMeaning::Z, count, start, std::move(startUnit), step, std::move(stepUnit));
}
CStackDimension T(uint32_t count, std::optional<double> start, std::optional<double> step)
{
    return Tagged(DimensionMeaning::T, count, start, Milliseconds, step, Milliseconds);
}
CStackDimension L(uint32_t count, std::optional<double> start, std::string startUnit, std::optional<double> step)
{
    return Tagged(DimensionMeaning::Lambda, count, start, std::move(startUnit), step, Nanometres);
}

Stack With(CStackDimension dimension)
{
    return Stack(1).Size(8, 8).Tiles(8, 8).Dimension(std::move(dimension));
}

// Even dimensions.

struct EvenRow : Row
{
    CStackDimension Dimension;
    DimType Type;
    double First;
    double Gap;
    std::vector<std::string> Messages;
};

class EvenDimension : public ZelSlide, public testing::WithParamInterface<EvenRow>
{
};

TEST_P(EvenDimension, ComesOfAStepAndAnyStart)
{
    auto& image = ReadImage(With(GetParam().Dimension));
    EXPECT_EQ(MessagesOf([&] { image.Dimensions(); }), GetParam().Messages);
    CIA::CDimension& dimension = DimensionOf(image, GetParam().Type);
    EXPECT_TRUE(dimension.HasEvenlySpacedPoints());
    EXPECT_EQ(dimension.NumOfPoints(), 3u);
    EXPECT_DOUBLE_EQ(dimension.FirstPoint(), GetParam().First);
    EXPECT_DOUBLE_EQ(dimension.GapBetweenPoints(), GetParam().Gap);
    EXPECT_DOUBLE_EQ(dimension.LastPoint(), GetParam().First + 2 * GetParam().Gap);
    EXPECT_THAT(dimension.Points(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Dimensions, EvenDimension,
    testing::Values(EvenRow{{"Z"}, Z(3, 5, Micrometres, 1.5, Micrometres), DimZ, 5, 1.5, {}},
                    EvenRow{{"ZInNanometres"}, Z(3, 5000, Nanometres, 1500, Nanometres), DimZ, 5, 1.5, {}},
                    EvenRow{{"ZInMetres"}, Z(3, 5, "10^0m^1", 1, "10^0m^1"), DimZ, 5e6, 1e6, {}},
                    EvenRow{{"ZThatFalls"}, Z(3, 5, Micrometres, -1.5, Micrometres), DimZ, 5, -1.5, {}},
                    EvenRow{{"ZInTwoUnits"}, Z(3, 5, Micrometres, 1500, Nanometres), DimZ, 5, 1.5, {UnitsDiffer}},
                    EvenRow{{"T"}, T(3, 500, 250), DimT, 0.5, 0.25, {}},
                    EvenRow{
                        {"TWithoutAStart"}, T(3, {}, 250), DimT, 0, 0.25, {StepWithoutStart + "T" + ButStepIsPresent}},
                    EvenRow{{"L"}, L(3, 400, Nanometres, 10), DimL, 400, 10, {}},
                    EvenRow{{"LFromMicrometres"}, L(3, 0.4, Micrometres, 10), DimL, 400, 10, {}}),
    NameOfRow());

// Dimensions of a single point, where neither step nor frames tell more.

struct SinglePointRow : Row
{
    CStackDimension Dimension;
    DimType Type;
    std::vector<std::string> Messages;
};

class DimensionOfASinglePoint : public ZelSlide, public testing::WithParamInterface<SinglePointRow>
{
};

TEST_P(DimensionOfASinglePoint, IsLeftWithoutAStep)
{
    auto& image = ReadImage(With(GetParam().Dimension));
    EXPECT_EQ(MessagesOf([&] { image.Dimensions(); }), GetParam().Messages);
    CIA::CDimension& dimension = DimensionOf(image, GetParam().Type);
    EXPECT_FALSE(dimension.HasEvenlySpacedPoints());
    EXPECT_EQ(dimension.NumOfPoints(), 1u);
    EXPECT_THAT(dimension.Points(), ElementsAre(0.0));
}

INSTANTIATE_TEST_SUITE_P(
    Dimensions, DimensionOfASinglePoint,
    testing::Values(
        SinglePointRow{{"ZOfNothing"}, Z(2, {}, "", {}, ""), DimZ, {StepIsZero}},
        SinglePointRow{{"ZOfNothingCountedOnce"}, Z(1, {}, "", {}, ""), DimZ, {StepIsZero, StepIsZero}},
        SinglePointRow{{"ZOfAStart"}, Z(2, 5, Micrometres, {}, ""), DimZ, {UnitsDiffer, NoStepOfZ, StepIsZero}},
        SinglePointRow{{"ZOfAStepOfZero"}, Z(2, 5, Micrometres, 0, Micrometres), DimZ, {NoStepOfZ, StepIsZero}},
        SinglePointRow{{"ZOfAStep"},
                       Z(2, {}, "", 1.5, Micrometres),
                       DimZ,
                       {StepWithoutStart + "Z" + ButStepIsPresent, StepIsZero}},
        SinglePointRow{{"TOfNothing"}, T(2, {}, {}), DimT, {StepIsZero}},
        SinglePointRow{{"TOfAStart"}, T(2, 500, {}), DimT, {NoStepOfT, StepIsZero}},
        SinglePointRow{{"TOfAStepOfZero"}, T(2, 500, 0), DimT, {NoStepOfT, StepIsZero}}),
    NameOfRow());

struct LambdaRow : Row
{
    CStackDimension Dimension;
    std::vector<std::string> Messages;
};

class LambdaWithoutAStep : public ZelSlide, public testing::WithParamInterface<LambdaRow>
{
};

TEST_P(LambdaWithoutAStep, LeavesTheImageWithoutDimensions)
{
    auto& image = ReadImage(With(GetParam().Dimension));
    EXPECT_EQ(MessagesOf([&] { EXPECT_THAT(image.Dimensions(), IsEmpty()); }), GetParam().Messages);
    EXPECT_EQ(ResultOfOpening(With(GetParam().Dimension)), AC_RESULT_FAILURE);
}

INSTANTIATE_TEST_SUITE_P(Dimensions, LambdaWithoutAStep,
                         testing::Values(LambdaRow{{"Nothing"}, L(2, {}, "", {}), {}},
                                         LambdaRow{{"NothingCountedOnce"}, L(1, {}, "", {}), {StepIsZero}},
                                         LambdaRow{
                                             {"AStep"}, L(2, {}, "", 10), {StepWithoutStart + "L" + ButStepIsPresent}},
                                         LambdaRow{{"AStepOfZero"}, L(2, 400, Nanometres, 0), {}}),
                         NameOfRow());

class DimensionTags : public ZelSlide
{
protected:
    static Document DocumentOf(const Stack& stack) { return Document().With(stack); }
};

TEST_F(DimensionTags, OfLambdaNeedAStepBesideAStart)
{
    EXPECT_FAILED_ASSERTION(ReadImage(With(L(2, 400, Nanometres, {}))).Dimensions());
}

struct BadValueRow : Row
{
    CStackDimension Dimension;
};

class ValueOfADimensionTag : public ZelSlide, public testing::WithParamInterface<BadValueRow>
{
};

TEST_P(ValueOfADimensionTag, MustHaveAUnitOfItsKind)
{
    EXPECT_FAILED_ASSERTION(ReadImage(With(GetParam().Dimension)).Dimensions());
}

INSTANTIATE_TEST_SUITE_P(Units, ValueOfADimensionTag,
                         testing::Values(BadValueRow{{"StartOfTime"}, Z(2, 5, Milliseconds, 1, Micrometres)},
                                         BadValueRow{{"StepOfTime"}, Z(2, 5, Micrometres, 1, Milliseconds)},
                                         BadValueRow{{"UnitsOfAnotherKind"}, Z(2, 5, "um", 1, "um")},
                                         BadValueRow{{"NoUnitForAStartOtherThanZero"}, Z(2, 5, "", 1, "")},
                                         BadValueRow{{"PositivePower"}, Z(2, 5, "10^3m^1", 1, "10^3m^1")},
                                         BadValueRow{{"NoNumber"}, Z(2, 5, "10^-xm^1", 1, "10^-xm^1")}),
                         NameOfRow());

TEST_F(DimensionTags, MayHaveNoUnitForAStartOfZero)
{
    auto& image = ReadImage(With(Z(3, 0, "", 1, Micrometres)));
    EXPECT_EQ(DimensionOf(image, DimZ).FirstPoint(), 0);
}

TEST_F(DimensionTags, WithoutTheValueOfAStartBreakARule)
{
    Document document = DocumentOf(With(Z(2, 5, Micrometres, 1, Micrometres)));
    constexpr uint32_t TagOfValue = 268435458;
    document.DimensionVolume(1, 0).At({2008, 2012}).Drop(TagOfValue);
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_FAILURE);
}

// What a tag means.

TEST_F(DimensionTags, OfANameAloneMeanChannels)
{
    CStackDimension dimension;
    dimension.Meaning = DimensionMeaning::Channel;
    dimension.NumOfPoints = 2;
    dimension.IsMeaningWritten = false;
    auto& image = BuildImage(With(dimension));
    EXPECT_EQ(image.Channels().size(), 2u);
    EXPECT_THAT(image.DimensionOrder().ExistenceAndIdxOfZelZtlcDims(), ElementsAre(DimC));
}

TEST_F(DimensionTags, OfNeitherMeaningNorNameMakeACorruptFile)
{
    Document document = DocumentOf(With(Z(2, 5, Micrometres, 1, Micrometres)));
    document.DimensionVolume(1, 0).Child(2008).Drop(2023);
    EXPECT_THAT(MessagesOfOpening(document), Contains("ERROR: Could not find the 'dimension meaning' tag!"));
    EXPECT_EQ(ResultOfOpening(document), AC_RESULT_FILE_CORRUPT);
}

class Meaning : public ZelSlide, public testing::WithParamInterface<int32_t>
{
};

TEST_P(Meaning, OtherThanTheFourBreaksARule)
{
    Document document;
    document.With(With(Z(2, 5, Micrometres, 1, Micrometres)));
    document.DimensionVolume(1, 0).Child(2008).Put(Int32(2023, GetParam()));
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_FAILURE);
}

INSTANTIATE_TEST_SUITE_P(Numbers, Meaning, testing::Values(0, 5, -1, 1000));

TEST_F(DimensionTags, WhoseEntriesDifferInMeaningBreakARule)
{
    Document document = DocumentOf(With(Z(2, 5, Micrometres, 1, Micrometres)));
    document.DimensionVolume(1, 0).Add(Volume(2008, {Int32(2023, DimensionMeaning::T)}));
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_FAILURE);
}

TEST_F(DimensionTags, AreReadFromTheirFirstEntry)
{
    Document document = DocumentOf(With(Z(2, 5, Micrometres, 1, Micrometres)));
    document.DimensionVolume(1, 0).Add(
        Volume(2008, {Int32(2023, DimensionMeaning::Z), Valued(2012, 77, Micrometres), Valued(2013, 7, Micrometres)}));
    document.DimensionVolume(1, 0).Add(Volume(2008, {Text(2021, "an entry without a meaning")}));
    EXPECT_EQ(DimensionOf(ReadImage(std::move(document)), DimZ).FirstPoint(), 5);
}

TEST_F(DimensionTags, OfAnEmptyVolumeAreADummy)
{
    auto& image = ReadImage(Stack(1).Size(8, 8).Tiles(8, 8).Dummy());
    EXPECT_THAT(MessagesOf([&] { image.Dimensions(); }),
                ElementsAre("Warning: encountered a 2007 tag with no 2008 child tags!"));
    EXPECT_THAT(image.DimensionOrder().ExistenceAndIdxOfZelZtlcDims(), IsEmpty());
    EXPECT_THAT(image.DimensionOrder().ExistenceAndIdxOfZelZtlcDimsIncludingDummyDims(), ElementsAre(DimDummy));
}

TEST_F(DimensionTags, OfOneMeaningTwiceAreToldAndBreakARule)
{
    const std::vector<std::pair<CStackDimension, std::string>> rows = {
        {Z(1, 5, Micrometres, 1, Micrometres), "Warning Z Dimention is already present"},
        {T(1, 5, 1), "Warning Dimention T is already Present"},
        {L(1, 5, Nanometres, 1), "Warning L Dimention is already Present"}};
    for (const auto& [dimension, message] : rows)
    {
        auto& image = ReadImage(With(dimension).Dimension(dimension));
        EXPECT_THAT(MessagesOf([&] { EXPECT_FAILED_ASSERTION(image.Dimensions()); }), Contains(message));
    }
}

TEST_F(DimensionTags, OfZTwiceAreToldOnceWhetherTheyHaveAStartOrNot)
{
    const CStackDimension withoutStart = {.Meaning = DimensionMeaning::Z, .NumOfPoints = 1};
    const CStackDimension withStart = Z(1, 5, Micrometres, 1, Micrometres);
    for (const auto& [first, second] : {std::pair(withoutStart, withoutStart), {withStart, withoutStart}})
        EXPECT_THAT(MessagesOfOpening(With(first).Dimension(second)),
                    Contains("Warning Z Dimention is already present").Times(1));
}

TEST_F(DimensionTags, OfTOrLambdaTwiceAreNotToldWhereTheyHaveNoStart)
{
    for (const auto meaning : {DimensionMeaning::T, DimensionMeaning::Lambda})
    {
        const CStackDimension dimension = {.Meaning = meaning, .NumOfPoints = 1};
        auto& image = ReadImage(With(dimension).Dimension(dimension));
        EXPECT_THAT(MessagesOf([&] { EXPECT_FAILED_ASSERTION(image.Dimensions()); }),
                    Not(Contains(HasSubstr("already"))));
    }
}

TEST_F(DimensionTags, CannotBeAskedForBeforeTheyWereRead)
{
    auto& order = ReadImage(Stack(1)).DimensionOrder();
    EXPECT_FAILED_ASSERTION(order.ExistenceAndIdxOfZelZtlcDims());
    EXPECT_FAILED_ASSERTION(order.ExistenceAndIdxOfZelZtlcDimsIncludingDummyDims());
}

// Units and names of what comes out.

TEST_F(DimensionTags, GiveUnitsOfTheModelAndNoneForT)
{
    auto& image = ReadImage(With(Z(2, 5, Nanometres, 1, Nanometres))
                                .Dimension(T(2, 500, 250))
                                .Dimension(L(2, 400, Nanometres, 10))
                                .Channels(2));
    EXPECT_STREQ(DimensionOf(image, DimZ).Units(), L"10^-6m^1");
    EXPECT_STREQ(DimensionOf(image, DimL).Units(), L"10^-9m^1");
    EXPECT_EQ(DimensionOf(image, DimT).Units(), nullptr);
    EXPECT_STREQ(DimensionOf(image, DimC).Units(), L"(This dimension does not have units)");
    EXPECT_STREQ(DimensionOf(image, DimP).Units(), L"(This dimension does not have units)");
    EXPECT_STREQ(DimensionOf(image, DimX).Units(), L"10^-6m^1");
}

struct NativeUnitRow : Row
{
    DimType Type;
    std::wstring Unit;
    std::wstring NameOfDimension;
};

class NativeUnit : public ZelSlide, public testing::WithParamInterface<NativeUnitRow>
{
};

TEST_P(NativeUnit, IsAConstantWhateverTheFileSays)
{
    auto& image = ReadImage(
        With(Z(2, 5, Nanometres, 1, Nanometres)).Dimension(T(2, 500, 250)).Dimension(L(2, 0.4, Micrometres, 10)));
    CIA::CDimension& dimension = DimensionOf(image, GetParam().Type);
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(dimension.NativeUnits(), GetParam().Unit); }),
                ElementsAre("TODO: This function is incorrect and needs to be completed!Currently we are passing dummy "
                            "values until FirstPointNativeValue_init() etc are created..."));
    EXPECT_EQ(dimension.Name(), GetParam().NameOfDimension);
    EXPECT_FALSE(dimension.IsEachPointAPixel());
}

TEST_P(NativeUnit, IsAskedForBeforeTheUnitOfTheModelIsTold)
{
    auto& image = ReadImage(
        With(Z(2, 5, Nanometres, 1, Nanometres)).Dimension(T(2, 500, 250)).Dimension(L(2, 0.4, Micrometres, 10)));
    CIA::CDimension& dimension = DimensionOf(image, GetParam().Type);
    EXPECT_THAT(MessagesOf([&] { dimension.Units(); }),
                ElementsAre(testing::StartsWith("TODO: This function is incorrect and needs to be completed!")));
}

INSTANTIATE_TEST_SUITE_P(
    Dimensions, NativeUnit,
    testing::Values(NativeUnitRow{{"Z"}, DimZ, L"10^-6m^1", L"Z Dimension (Height from base of slide)"},
                    NativeUnitRow{{"T"}, DimT, L"10^-3s^1", L"Time Dimension"},
                    NativeUnitRow{{"L"}, DimL, L"10^-9m^1", L"Lambda (Wavelength) Dimension"}),
    NameOfRow());

} // namespace
