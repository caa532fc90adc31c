#pragma once

#include <cstdint>

namespace SampleDocuments
{

/// The tags of a document by name. A number means something only below its parent: several names share one.
struct Tag
{
    enum E : uint32_t
    {
        // Anywhere: a value and its unit.
        Unit = 268435456,
        Value = 268435458,

        // Below the root.
        Collection = 2000,
        OldProperties = 2,
        PersistentId = 50, ///< below OldProperties
        Thumbnail = 38,    ///< below OldProperties, and below PropertySet

        // Below the collection.
        Stack = 2001,
        CollectionProperties = 2004,
        DisplayFlow = 2011,
        VersionNumber = 2035,
        Blob = 2024, ///< below stacks, frames and channel properties as well

        // Below the collection's properties, and in their set.
        PropertySet = 2109,
        Note = 13,
        DocumentTime = 14,
        Author = 15,
        CreatorName = 17,
        CreatorMajorVersion = 18,
        CreatorMinorVersion = 19,
        CreatorSubVersion = 20,
        CreatorBuildNumber = 21,
        LastSavedTime = 23,
        ProductName = 34,
        ProductVersion = 35,
        FamilyId = 54,

        // Below the display flow, a layer and a channel of it.
        Layer = 2012,
        LayerChannel = 2013,
        OperatorType = 10000,
        OperatorId = 10001,
        StackToShow = 10005,
        Transparency = 10009,
        Hidden = 10056,
        PlaneUnit = 2011,
        PlaneYUnit = 2063,
        PlaneOrigin = 20006,
        PlaneScale = 20007,
        PlaneRect = 20008,

        // Below a stack.
        Frame = 2002,
        Counts = 2003,
        StackProperties = 2005,
        Dimension = 2007,
        ChannelProperties = 2036,

        // Below the properties of a stack; the first three below a channel as well.
        Limits = 2003,
        LookUpTable = 2004,
        OpticalPath = 2043, ///< below the properties of a frame as well
        CreationTime = 2015,
        FrameOrigin = 2018,
        FrameScale = 2019,
        FrameUnit = 2020,
        StackName = 2030,
        FrameYUnit = 2064,
        StackType = 2074,
        Axis0Meaning = 2451,
        Axis1Meaning = 2452,
        Acquisition = 21000,
        StageX = 21007,
        StageY = 21008,
        SampleName = 21104,
        SampleDescription = 21105,
        ExperimentName = 175266,

        // Below a dimension, and below its entries.
        DimensionEntry = 2008,
        ChannelName = 2021,
        Meaning = 2023,
        Wavelength = 2417,
        ZStart = 2012,
        ZStep = 2013,
        TStart = 2100,
        TStep = 2016,
        LambdaStart = 2039,
        LambdaStep = 2040,

        // Below a frame, and below its properties.
        FrameProperties = 2006,
        FrameDirectory = 2016,
        FrameVectorGraphics = 2017,
        FrameStore = 2018,
        FramePixels = 2037,
        Boundary = 2053,
        Shift = 2410,
        FrameZ = 2014,
        FrameT = 2017,
        FrameLambda = 2041,

        // Below a device, which bears its ID as its tag, and below its properties.
        DeviceProperties = 120114,
        DeviceSubType = 120130,
        OldExposure = 100002,
        Exposure = 100100,
        Magnification = 120060,
        Aperture = 120061,
        WorkingDistance = 120062,
        LensName = 120063,
        ImmersionMedium = 120064,
        RefractiveIndex = 120079,

        // In the tree of a region.
        Shape = 1073741825,
        ShapeClass = 1,
        ShapeObject = 0,
        ShapeProperties = 4096,
        RegionName = 512,
        NumOfPoints = 20737,
        Point = 20738,
        TopLeft = 20993,
        BottomRight = 20994,
        SinglePoint = 21249,
        OnRim = 21329,
        CircleCentre = 21330,
        FirstOnRim = 21341,
        SecondOnRim = 21342,
        ThirdOnRim = 21343,
        RotationPoint = 21344,
        FirstSide = 21345,
        SecondSide = 21346,
        EllipseCentre = 21347,
        EllipseXAxis = 21348,
        EllipseYAxis = 21349
    };
};

} // namespace SampleDocuments
