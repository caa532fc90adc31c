#include "HostTool/Export/OmeXml.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <pugixml.hpp>
#include <sstream>

namespace HostTool
{

namespace
{

using Node = pugi::xml_node;

/// The shortest text that reads back as the number, in any locale.
std::string NumberText(double number)
{
    char text[32];
    const auto [end, error] = std::to_chars(text, text + sizeof(text), number);
    return error == std::errc() ? std::string(text, end) : "0";
}

/// XML has no way to write most control characters.
std::string WithoutControls(std::string text)
{
    std::replace_if(
        text.begin(), text.end(),
        [](char c) { return static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t' && c != '\r'; }, '?');
    return text;
}

Node AddChild(Node parent, const char* name)
{
    return parent.append_child(name);
}

Node AddText(Node parent, const char* name, const std::string& text)
{
    Node child = AddChild(parent, name);
    child.text().set(WithoutControls(text).c_str());
    return child;
}

void Set(Node node, const char* name, const std::string& value)
{
    node.append_attribute(name).set_value(WithoutControls(value).c_str());
}

void Set(Node node, const char* name, const std::optional<std::string>& value)
{
    if (value)
        Set(node, name, *value);
}

void Set(Node node, const char* name, std::optional<double> value)
{
    if (value && std::isfinite(*value))
        Set(node, name, NumberText(*value));
}

void SetCount(Node node, const char* name, uint64_t value)
{
    Set(node, name, std::to_string(value));
}

void SetMeasured(Node node, const std::string& name, std::optional<double> value, const std::string& unit)
{
    if (!value || !std::isfinite(*value))
        return;
    Set(node, name.c_str(), value);
    Set(node, (name + "Unit").c_str(), unit);
}

/// One of the words that the data model has.
std::string ImmersionOf(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 'a' - 'A') : c; });
    for (const auto& [part, word] : {std::pair{"oil", "Oil"}, std::pair{"water", "Water"}, std::pair{"air", "Air"},
                                     std::pair{"glycer", "Glycerol"}})
        if (text.find(part) != std::string::npos)
            return word;
    return "Other";
}

/// A colour as the data model has it: four bytes, the last of which says that it covers, in one signed number.
std::string ColourNumber(const std::array<int, 3>& colour)
{
    const auto byte = [](int value) { return static_cast<uint32_t>(std::clamp(value, 0, 255)); };
    const uint32_t number = byte(colour[0]) << 24 | byte(colour[1]) << 16 | byte(colour[2]) << 8 | 255;
    return std::to_string(static_cast<int32_t>(number));
}

const CAxisFacts* AxisOf(const CGroupFacts& group, AC_AxisType type)
{
    const auto axis = std::find_if(group.Axes.begin(), group.Axes.end(),
                                   [&](const CAxisFacts& candidate) { return candidate.Type == type; });
    return axis == group.Axes.end() ? nullptr : &*axis;
}

std::optional<double> StepInMicrometres(const CGroupFacts& group, AC_AxisType type)
{
    const CAxisFacts* axis = AxisOf(group, type);
    if (!axis || !axis->Step || *axis->Step <= 0 || !axis->Units)
        return std::nullopt;
    return Micrometres(*axis->Step, *axis->Units);
}

using Vector = std::array<double, 2>;

double LengthOf(const Vector& vector)
{
    return std::hypot(vector[0], vector[1]);
}

/// An ellipse by its centre and its two half axes.
struct CEllipse
{
    Vector Centre{};
    Vector First{};
    Vector Second{};

    bool IsUpright() const { return First[1] == 0 && Second[0] == 0; }
};

/// The ellipse in a rectangle, which may be turned, that is told by its four corners; nothing if it has no area.
std::optional<CEllipse> EllipseIn(const std::vector<std::pair<double, double>>& corners)
{
    if (corners.size() != 4)
        return std::nullopt;
    const auto half = [&](size_t from, size_t to) {
        return Vector{(corners[to].first - corners[from].first) / 2, (corners[to].second - corners[from].second) / 2};
    };
    CEllipse ellipse;
    ellipse.Centre = {(corners[0].first + corners[2].first) / 2, (corners[0].second + corners[2].second) / 2};
    ellipse.First = half(0, 1);
    ellipse.Second = half(1, 2);
    // Corners that run the other way round begin with the upright side.
    if (ellipse.First[0] == 0 && ellipse.Second[1] == 0)
        std::swap(ellipse.First, ellipse.Second);
    if (LengthOf(ellipse.First) == 0 || LengthOf(ellipse.Second) == 0)
        return std::nullopt;
    return ellipse;
}

/// The data model has upright ellipses only, and a way to turn them: x' = A00 x + A01 y + A02, and y' likewise.
void WriteEllipse(Node node, const CEllipse& ellipse)
{
    const auto& [x, y] = ellipse.Centre;
    const double radiusX = LengthOf(ellipse.First);
    const double radiusY = LengthOf(ellipse.Second);
    Set(node, "X", x);
    Set(node, "Y", y);
    Set(node, "RadiusX", radiusX);
    Set(node, "RadiusY", radiusY);
    if (ellipse.IsUpright())
        return;
    const Vector first = {ellipse.First[0] / radiusX, ellipse.First[1] / radiusX};
    const Vector second = {ellipse.Second[0] / radiusY, ellipse.Second[1] / radiusY};
    Node transform = AddChild(node, "Transform");
    Set(transform, "A00", first[0]);
    Set(transform, "A10", first[1]);
    Set(transform, "A01", second[0]);
    Set(transform, "A11", second[1]);
    Set(transform, "A02", x - first[0] * x - second[0] * y);
    Set(transform, "A12", y - first[1] * x - second[1] * y);
}

/// The parts of an image that stand apart from it, by the numbers that join them.
class CImageWriter
{
public:
    CImageWriter(const COmeImage& image, size_t number) : _Image(image), _Number(std::to_string(number)) {}

    void WriteInstrument(Node ome, const CDocumentFacts& document) const
    {
        Node instrument = AddChild(ome, "Instrument");
        Set(instrument, "ID", "Instrument:" + _Number);
        Set(AddChild(instrument, "Microscope"), "Model", document.DeviceName);
        if (!_Image.Facts->Lens)
            return;
        const CLensFacts& lens = *_Image.Facts->Lens;
        Node objective = AddChild(instrument, "Objective");
        Set(objective, "ID", "Objective:" + _Number);
        Set(objective, "Model", lens.Name);
        if (lens.Immersion)
            Set(objective, "Immersion", ImmersionOf(*lens.Immersion));
        Set(objective, "LensNA", lens.NumericalAperture);
        Set(objective, "NominalMagnification", lens.Magnification);
        SetMeasured(objective, "WorkingDistance", lens.WorkingDistance, "mm");
    }

    void WriteImage(Node ome, const CDocumentFacts& document) const
    {
        Node image = AddChild(ome, "Image");
        Set(image, "ID", "Image:" + _Number);
        Set(image, "Name", _Image.Facts->Name);
        if (document.Created)
            AddText(image, "AcquisitionDate", *document.Created);
        if (document.Author)
            Set(AddChild(image, "ExperimenterRef"), "ID", std::string("Experimenter:0"));
        if (document.Comment)
            AddText(image, "Description", *document.Comment);
        Set(AddChild(image, "InstrumentRef"), "ID", "Instrument:" + _Number);
        if (_Image.Facts->Lens)
        {
            Node settings = AddChild(image, "ObjectiveSettings");
            Set(settings, "ID", "Objective:" + _Number);
            Set(settings, "RefractiveIndex", _Image.Facts->Lens->RefractiveIndex);
        }
        WriteStage(image);
        WritePixels(image);
        for (size_t roi = 0; roi < _Image.Regions.size(); ++roi)
            Set(AddChild(image, "ROIRef"), "ID", RoiName(roi));
        Set(AddChild(image, "AnnotationRef"), "ID", "Annotation:" + _Number);
    }

    void WriteAnnotation(Node annotations, const CDocumentFacts& document) const
    {
        Node annotation = AddChild(annotations, "MapAnnotation");
        Set(annotation, "ID", "Annotation:" + _Number);
        Set(annotation, "Namespace", std::string("zel"));
        Node value = AddChild(annotation, "Value");
        const auto add = [&](const std::string& key, const std::optional<std::string>& text)
        {
            if (text)
                Set(AddText(value, "M", *text), "K", key);
        };
        const CGroupFacts& group = *_Image.Facts;
        add("FormatVersion", document.FormatVersion);
        add("DeviceVersion", document.DeviceVersion);
        add("FamilyID", document.FamilyID);
        add("Updated", document.Updated);
        add("Experiment", group.Experiment);
        add("Sample", group.Sample);
        add("SampleComment", group.SampleComment);
        for (const auto& [name, text] : group.Display)
            add(name, text);
        for (const CChannelFacts& channel : group.Channels)
        {
            const std::string id = " of channel " + std::to_string(channel.ID);
            if (channel.ExposureTime)
                add("ExposureTime" + id, NumberText(*channel.ExposureTime) + " µs");
            if (channel.Limits)
                add("DisplayLimits" + id,
                    std::to_string(channel.Limits->Shadow) + " " + std::to_string(channel.Limits->Highlight));
        }
        add("Left", std::to_string(Margin().first)); // of the picture, in the exported one
        add("Top", std::to_string(Margin().second));
    }

    void WriteRegions(Node ome) const
    {
        for (size_t roi = 0; roi < _Image.Regions.size(); ++roi)
        {
            const CRegionFacts& region = _Image.Regions[roi];
            Node node = AddChild(ome, "ROI");
            Set(node, "ID", RoiName(roi));
            Set(node, "Name", region.Name);
            WriteShape(AddChild(node, "Union"), region, roi);
        }
    }

private:
    const CPixelRect& Rect() const { return _Image.Plan->front().Rect; }
    /// The finest level that is exported.
    const CLevel& Finest() const { return *_Image.Plan->front().Level; }
    std::pair<int64_t, int64_t> Margin() const
    {
        const CPixelRect& picture = Finest().Picture;
        return {picture.X - Rect().X, picture.Y - Rect().Y};
    }
    std::string RoiName(size_t roi) const { return "ROI:" + _Number + "." + std::to_string(roi); }

    void WriteStage(Node image) const
    {
        if (!_Image.Facts->StagePosition)
            return;
        constexpr double nanometresPerMicrometre = 1000;
        Node stage = AddChild(image, "StageLabel");
        Set(stage, "Name", std::string("stage"));
        SetMeasured(stage, "X", _Image.Facts->StagePosition->x / nanometresPerMicrometre, "µm");
        SetMeasured(stage, "Y", _Image.Facts->StagePosition->y / nanometresPerMicrometre, "µm");
    }

    void WritePixels(Node image) const
    {
        const CGroupPixels& pixels = *_Image.Pixels;
        const CAxisSizes& axes = _Image.Planes->Sizes();
        const std::vector<uint32_t>& channels = _Image.Planes->Channels();
        const CPixelFormat& format = pixels.Channel(channels.front()).Format;
        Node node = AddChild(image, "Pixels");
        Set(node, "ID", "Pixels:" + _Number);
        Set(node, "DimensionOrder", std::string("XYCZT"));
        Set(node, "Type", OmeTypeOf(format));
        if (const auto bits = _Image.Facts->Channels.front().NumOfUsedBits)
            SetCount(node, "SignificantBits", static_cast<uint64_t>(*bits));
        Set(node, "BigEndian", std::string("false"));
        Set(node, "Interleaved", std::string(format.IsColour() ? "true" : "false"));
        SetCount(node, "SizeX", static_cast<uint64_t>(Rect().Width));
        SetCount(node, "SizeY", static_cast<uint64_t>(Rect().Height));
        SetCount(node, "SizeZ", static_cast<uint64_t>(axes.Z));
        SetCount(node, "SizeC", channels.size() * static_cast<uint64_t>(axes.Lambda) * format.NumOfComponents);
        SetCount(node, "SizeT", static_cast<uint64_t>(axes.T));
        SetMeasured(node, "PhysicalSizeX", Finest().PixelWidth, "µm");
        SetMeasured(node, "PhysicalSizeY", Finest().PixelHeight, "µm");
        SetMeasured(node, "PhysicalSizeZ", StepInMicrometres(*_Image.Facts, AC_AT_Z), "µm");
        if (const CAxisFacts* time = AxisOf(*_Image.Facts, AC_AT_TIME); time && time->Step.value_or(0) > 0)
            SetMeasured(node, "TimeIncrement", time->Step, "s");
        WriteChannels(node);
        const auto planes = _Image.Planes->Planes();
        for (size_t plane = 0; plane < planes.size(); ++plane)
            WriteTiffData(node, planes[plane], plane);
        for (const CPosition& plane : planes)
            WritePlane(node, plane);
    }

    void WriteChannels(Node node) const
    {
        const CAxisFacts* lambda = AxisOf(*_Image.Facts, AC_AT_LAMBDA);
        size_t index = 0;
        for (const CChannelFacts& facts : _Image.Facts->Channels)
            for (int64_t i = 0; i < _Image.Pixels->Axes().Lambda; ++i, ++index)
            {
                std::string name = facts.Name.value_or("Channel " + std::to_string(facts.ID));
                std::optional<double> wavelength;
                if (lambda && lambda->Start && lambda->Step.value_or(0) > 0 && lambda->Units)
                {
                    const double start = *lambda->Start + static_cast<double>(i) * *lambda->Step;
                    if (const auto micrometres = Micrometres(start, *lambda->Units))
                        wavelength = std::round(*micrometres * 1e6) / 1e3; // nanometres, without noise of the division
                }
                if (_Image.Pixels->Axes().Lambda > 1)
                    name += wavelength ? ", " + NumberText(*wavelength) + " nm" : ", wavelength " + std::to_string(i);
                Node channel = AddChild(node, "Channel");
                Set(channel, "ID", "Channel:" + _Number + ":" + std::to_string(index));
                Set(channel, "Name", name);
                SetCount(channel, "SamplesPerPixel", _Image.Pixels->Channel(facts.ID).Format.NumOfComponents);
                SetMeasured(channel, "EmissionWavelength", wavelength, "nm");
                if (!facts.LookUpTable.empty())
                    Set(channel, "Color", ColourNumber(facts.LookUpTable.back()));
            }
    }

    void SetIndexes(Node node, const CPosition& plane, const std::string& prefix) const
    {
        SetCount(node, (prefix + "Z").c_str(), static_cast<uint64_t>(plane.Z - _Image.Planes->FirstZ()));
        SetCount(node, (prefix + "C").c_str(), _Image.Planes->ChannelIndex(plane));
        SetCount(node, (prefix + "T").c_str(), static_cast<uint64_t>(plane.T - _Image.Planes->FirstT()));
    }

    void WriteTiffData(Node node, const CPosition& plane, size_t number) const
    {
        Node data = AddChild(node, "TiffData");
        SetCount(data, "IFD", _Image.FirstDirectory + number);
        SetCount(data, "PlaneCount", 1);
        SetIndexes(data, plane, "First");
    }

    void WritePlane(Node node, const CPosition& position) const
    {
        const auto time = _Image.Times.at(static_cast<size_t>(position.T - _Image.Planes->FirstT()));
        const auto depth = _Image.Depths.at(static_cast<size_t>(position.Z - _Image.Planes->FirstZ()));
        Node plane = AddChild(node, "Plane");
        SetIndexes(plane, position, "The");
        SetMeasured(plane, "DeltaT", time, "s");
        SetMeasured(plane, "PositionZ", depth, "µm");
    }

    /// Vertices in pixels of the exported picture.
    std::vector<std::pair<double, double>> VerticesOf(const CRegionFacts& region) const
    {
        // They are told in pixels of level 0, which need not be exported.
        const CPixelRect& picture = _Image.Pixels->Level(0).Picture;
        const double zoomOut = static_cast<double>(picture.Width) / static_cast<double>(Finest().Picture.Width);
        std::vector<std::pair<double, double>> vertices;
        for (const CRegionPoint& point : region.Points)
            vertices.emplace_back(
                static_cast<double>(point.X - picture.X) / zoomOut + static_cast<double>(Margin().first),
                static_cast<double>(point.Y - picture.Y) / zoomOut + static_cast<double>(Margin().second));
        return vertices;
    }

    void WriteShape(Node shapes, const CRegionFacts& region, size_t roi) const
    {
        const auto vertices = VerticesOf(region);
        if (vertices.empty())
            return;
        const std::string shape = region.Shape.value_or("");
        const auto ellipse = shape == "ELLIPSE" ? EllipseIn(vertices) : std::nullopt;
        Node node = AddChild(shapes, vertices.size() == 1 ? "Point"
                                     : ellipse            ? "Ellipse"
                                     : shape == "LINE"    ? "Polyline"
                                                          : "Polygon");
        Set(node, "ID", "Shape:" + _Number + "." + std::to_string(roi));
        Set(node, "Text", region.Name);
        if (vertices.size() == 1)
        {
            Set(node, "X", vertices[0].first);
            Set(node, "Y", vertices[0].second);
        }
        else if (ellipse)
        {
            WriteEllipse(node, *ellipse);
        }
        else
        {
            std::string points;
            for (const auto& [x, y] : vertices)
                points += (points.empty() ? "" : " ") + NumberText(x) + "," + NumberText(y);
            Set(node, "Points", points);
        }
    }

    const COmeImage& _Image;
    std::string _Number;
};

void WritePicture(Node ome, const COmePicture& picture, size_t number)
{
    const CFurtherPicture& facts = *picture.Picture;
    Node image = AddChild(ome, "Image");
    Set(image, "ID", "Image:" + std::to_string(number));
    Set(image, "Name", facts.Name);
    Node pixels = AddChild(image, "Pixels");
    Set(pixels, "ID", "Pixels:" + std::to_string(number));
    Set(pixels, "DimensionOrder", std::string("XYCZT"));
    Set(pixels, "Type", OmeTypeOf(facts.Format));
    Set(pixels, "Interleaved", std::string(facts.Format.IsColour() ? "true" : "false"));
    SetCount(pixels, "SizeX", facts.Width);
    SetCount(pixels, "SizeY", facts.Height);
    SetCount(pixels, "SizeZ", 1);
    SetCount(pixels, "SizeC", facts.Format.NumOfComponents);
    SetCount(pixels, "SizeT", 1);
    Node channel = AddChild(pixels, "Channel");
    Set(channel, "ID", "Channel:" + std::to_string(number) + ":0");
    SetCount(channel, "SamplesPerPixel", facts.Format.NumOfComponents);
    Node data = AddChild(pixels, "TiffData");
    SetCount(data, "IFD", picture.Directory);
    SetCount(data, "PlaneCount", 1);
}

} // namespace

std::string OmeTypeOf(const CPixelFormat& format)
{
    const std::string bits = std::to_string(8 * format.BytesPerComponent);
    if (format.Values == ValueKind::Float)
        return format.BytesPerComponent == 4 ? "float" : format.BytesPerComponent == 8 ? "double" : "";
    if (format.BytesPerComponent > 4)
        return "";
    return (format.Values == ValueKind::Signed ? "int" : "uint") + bits;
}

std::optional<double> Micrometres(double value, const std::string& unit)
{
    // As "10^-6m^1".
    int exponent = 0;
    if (!unit.starts_with("10^"))
        return std::nullopt;
    const char* end = unit.data() + unit.size();
    const auto [rest, error] = std::from_chars(unit.data() + 3, end, exponent);
    if (error != std::errc() || std::string(rest, end) != "m^1" || exponent < -30 || exponent > 30)
        return std::nullopt;
    exponent += 6;
    // By a division where that is exact, so that 1.5 stays 1.5.
    return exponent >= 0 ? value * std::pow(10.0, exponent) : value / std::pow(10.0, -exponent);
}

std::string OmeXmlOf(const CDocumentFacts& document, const std::vector<COmeImage>& images,
                     const std::vector<COmePicture>& pictures)
{
    pugi::xml_document xml;
    Node declaration = xml.append_child(pugi::node_declaration);
    Set(declaration, "version", std::string("1.0"));
    Set(declaration, "encoding", std::string("UTF-8"));
    Node ome = AddChild(xml.root(), "OME");
    const std::string schema = "http://www.openmicroscopy.org/Schemas/OME/2016-06";
    Set(ome, "xmlns", schema);
    Set(ome, "xmlns:xsi", std::string("http://www.w3.org/2001/XMLSchema-instance"));
    Set(ome, "xsi:schemaLocation", schema + " " + schema + "/ome.xsd");
    Set(ome, "Creator", std::string("zel"));
    std::vector<CImageWriter> writers;
    for (const COmeImage& image : images)
        writers.emplace_back(image, writers.size());
    if (document.Author)
    {
        Node experimenter = AddChild(ome, "Experimenter");
        Set(experimenter, "ID", std::string("Experimenter:0"));
        Set(experimenter, "UserName", document.Author);
    }
    for (const CImageWriter& writer : writers)
        writer.WriteInstrument(ome, document);
    for (const CImageWriter& writer : writers)
        writer.WriteImage(ome, document);
    for (size_t i = 0; i < pictures.size(); ++i)
        WritePicture(ome, pictures[i], images.size() + i);
    Node annotations = AddChild(ome, "StructuredAnnotations");
    for (const CImageWriter& writer : writers)
        writer.WriteAnnotation(annotations, document);
    for (const CImageWriter& writer : writers)
        writer.WriteRegions(ome);
    std::ostringstream text;
    xml.save(text, "", pugi::format_raw);
    return text.str();
}

} // namespace HostTool
