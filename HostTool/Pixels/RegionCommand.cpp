#include "HostTool/Pixels/RegionCommand.h"

#include "HostTool/Pixels/Blend.h"
#include "HostTool/Pixels/CommonOptions.h"
#include "HostTool/Pixels/Parallel.h"
#include "HostTool/Pixels/PictureFile.h"
#include "HostTool/Pixels/Progress.h"
#include "HostTool/StandardOutput.h"
#include "HostTool/Text.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <future>
#include <iostream>

namespace HostTool
{

namespace
{

constexpr size_t PixelsPerBlendingTask = size_t{1} << 16;

/// The rectangle that was asked for, from the corner of tile 0, as far as it shows the picture.
CPixelRect ShownRect(const CDocument& document, const CLevel& level, const std::optional<CPixelRect>& asked)
{
    CPixelRect rect = level.Picture;
    if (asked)
    {
        rect = *asked;
        rect.X += level.Picture.X;
        rect.Y += level.Picture.Y;
    }
    const CPixelRect shown = Intersection(rect, level.Picture);
    if (shown.IsEmpty())
        throw CHostError(ExitCode::WrongUsage,
                         document.Path().string() + ": the rectangle lies beside the picture, which is " +
                             std::to_string(level.Picture.Width) + " x " + std::to_string(level.Picture.Height) +
                             " in level " + std::to_string(level.Level) + "; choose another one");
    return shown;
}

/// A band of the region, as high as a row of tiles, in memory.
struct CBand
{
    /// `room`: memory of a former band, which is dear to get anew.
    CBand(const CPixelRect& rect, const CPixelFormat& format, ByteBuffer room = {})
        : Bytes(std::move(room)), Target{nullptr, 0, 0, 0, format}
    {
        Target.Width = static_cast<uint32_t>(rect.Width);
        Target.Height = static_cast<uint32_t>(rect.Height);
        Target.Stride = size_t{Target.Width} * format.BytesPerPixel();
        Bytes.resize(Target.Stride * Target.Height);
        Target.Pixels = Bytes.data();
    }
    ByteBuffer Bytes;
    CPixelTarget Target;
};

/// The bands of a rectangle, each of which ends with a row of tiles.
std::vector<CPixelRect> BandsOf(const CLevel& level, const CPixelRect& rect)
{
    std::vector<CPixelRect> bands;
    const CTileRange range = TilesOf(level, rect);
    for (int64_t row = range.FirstRow; row <= range.LastRow; ++row)
    {
        const CPixelRect tiles = level.TileRect(0, row);
        bands.push_back(Intersection({rect.X, tiles.Y, rect.Width, tiles.Height}, rect));
    }
    return bands;
}

/// Makes the bands one after the other, each while the one before it is being written.
class CRegionMaker
{
public:
    CRegionMaker(const CGroupPixels& pixels, const CRegionRequest& request)
        : _Pixels(pixels), _Request(request), _Level(pixels.Level(request.Level)),
          _Rect(ShownRect(pixels.Document(), _Level, request.Rect)), _Stitcher(pixels, request.Background, request.Jobs)
    {
        std::vector<uint32_t> channels = request.Channels;
        if (channels.empty())
            for (const CChannelPixels& channel : pixels.Channels())
                channels.push_back(channel.ID);
        // A colour picture alone is shown as it is: its limits are those that it was made with.
        const bool isPicture = channels.size() == 1 && pixels.Channel(channels.front()).Format.IsColour();
        const bool isBlended = !isPicture && (request.Channels.empty() || request.IsBlended);
        for (const uint32_t channel : channels)
            (isBlended ? _Blended : _OneByOne).push_back(channel);
        if (!isBlended)
            return;
        const auto displays = DisplaysOf(pixels, channels);
        for (size_t i = 0; i < channels.size(); ++i)
            _Blenders.emplace_back(pixels.Channel(channels[i]).Format, displays[i]);
    }

    CPictureFacts Facts() const
    {
        const CPixelFormat shown{3, 1, ValueKind::Unsigned};
        CPictureFacts facts;
        facts.Width = static_cast<uint32_t>(_Rect.Width);
        facts.Height = static_cast<uint32_t>(_Rect.Height);
        facts.Format = _OneByOne.empty() ? shown : _Pixels.Channel(_OneByOne.front()).Format;
        facts.PixelWidth = _Level.PixelWidth;
        facts.PixelHeight = _Level.PixelHeight;
        return facts;
    }
    uint32_t NumOfPictures() const { return std::max(1U, static_cast<uint32_t>(_OneByOne.size())); }
    const CTileFailures& Failures() const { return _Stitcher.Failures(); }
    uint64_t NumOfFilled() const { return _Stitcher.NumOfFilled() + Failures().Count(); }
    bool IsBlended() const { return !_Blended.empty(); }

    void Write(CPictureWriter& writer)
    {
        const auto bands = BandsOf(_Level, _Rect);
        CProgress progress(bands.size() * NumOfPictures(), "bands");
        std::future<ByteBuffer> writing;
        ByteBuffer room;
        for (uint32_t picture = 0; picture < NumOfPictures(); ++picture)
            for (const CPixelRect& rect : bands)
            {
                CBand band =
                    IsBlended() ? Blend(rect, std::move(room)) : Read(_OneByOne[picture], rect, std::move(room));
                room = writing.valid() ? writing.get() : ByteBuffer();
                writing = std::async(std::launch::async,
                                     [&writer, bytes = std::move(band.Bytes)]() mutable
                                     {
                                         writer.Write({bytes.data(), bytes.size()});
                                         return std::move(bytes);
                                     });
                progress.Advance(1);
            }
        if (writing.valid())
            writing.get();
    }

private:
    CBand Read(uint32_t channel, const CPixelRect& rect, ByteBuffer room = {})
    {
        CBand band(rect, _Pixels.Channel(channel).Format, std::move(room));
        CPosition position = _Request.Position;
        position.Channel = channel;
        _Stitcher.Read(_Level, position, rect, band.Target);
        return band;
    }
    CBand Blend(const CPixelRect& rect, ByteBuffer room)
    {
        CBand sum(rect, {3, 1, ValueKind::Unsigned}, std::move(room));
        std::fill(sum.Bytes.begin(), sum.Bytes.end(), uint8_t{0});
        const size_t numOfPixels = sum.Bytes.size() / 3;
        for (size_t i = 0; i < _Blended.size(); ++i)
        {
            const CBand band = Read(_Blended[i], rect);
            ForEachInParallel((numOfPixels + PixelsPerBlendingTask - 1) / PixelsPerBlendingTask, _Request.Jobs,
                              [&](size_t task)
                              {
                                  const size_t first = task * PixelsPerBlendingTask;
                                  const size_t count = std::min(PixelsPerBlendingTask, numOfPixels - first);
                                  _Blenders[i].Add(band.Bytes.data() + first * band.Target.Format.BytesPerPixel(),
                                                   count, sum.Bytes.data() + 3 * first);
                              });
        }
        return sum;
    }

    const CGroupPixels& _Pixels;
    const CRegionRequest& _Request;
    const CLevel& _Level;
    CPixelRect _Rect;
    CStitcher _Stitcher;
    std::vector<uint32_t> _Blended;
    std::vector<uint32_t> _OneByOne;
    std::vector<CBlender> _Blenders;
};

void RequirePosition(const CGroupPixels& pixels, const CPosition& position)
{
    const CAxisSizes& axes = pixels.Axes();
    if (position.Z >= axes.Z || position.T >= axes.T || position.Lambda >= axes.Lambda)
        throw CHostError(ExitCode::WrongUsage, pixels.Document().Path().string() + ": " + NameOfGroup(pixels.Group()) +
                                                   " has " + std::to_string(axes.Z) + " positions on z, " +
                                                   std::to_string(axes.T) + " on t, " + std::to_string(axes.Lambda) +
                                                   " on lambda, counted from 0; choose one of them");
}

std::string TextOfFormat(const CPixelFormat& format)
{
    return std::string(format.IsColour() ? "red, green, blue of " : "grey of ") +
           std::to_string(8 * format.BytesPerComponent) + " bits";
}

/// Of a picture that may lack nothing. Throws CHostError.
void RequireComplete(const CGroupPixels& pixels, const CRegionMaker& maker)
{
    if (maker.NumOfFilled() == 0 && pixels.Limits().empty())
        return;
    std::string why = TextOfCount(maker.NumOfFilled(), "tile") + " filled";
    if (maker.Failures().Count() > 0)
        why += ", " + maker.Failures().Text("decoded");
    for (const std::string& limit : pixels.Limits())
        why += ", " + limit;
    throw CHostError(ExitCode::BadFile,
                     pixels.Document().Path().string() + ": --strict: " + why + "; nothing is written");
}

} // namespace

CRegionOutcome WriteRegion(const CDocument& document, const CRegionRequest& request)
{
    RequireGroup(document, request.Group);
    const CGroupPixels pixels(document, request.Group, request.Values);
    RequirePosition(pixels, request.Position);
    CRegionMaker maker(pixels, request);
    const CPictureFacts facts = maker.Facts();
    const auto writer = MakePictureWriter(request.Output, facts, maker.NumOfPictures());
    maker.Write(*writer);
    if (request.IsStrict)
        RequireComplete(pixels, maker);
    writer->Finish();

    CRegionOutcome outcome;
    outcome.Remarks = pixels.Limits();
    outcome.Line = request.Output.string() + ": " + std::to_string(facts.Width) + " x " + std::to_string(facts.Height) +
                   " pixels, " + TextOfFormat(facts.Format) + (maker.IsBlended() ? ", blended" : "");
    if (maker.NumOfPictures() > 1)
        outcome.Line += ", " + std::to_string(maker.NumOfPictures()) + " pictures";
    if (maker.NumOfFilled() > 0)
        outcome.Line += ", " + TextOfCount(maker.NumOfFilled(), "tile") + " filled";
    if (const CTileFailures& failures = maker.Failures(); failures.Count() > 0)
    {
        outcome.Remarks.push_back(document.Path().string() + ": " + failures.Text("decoded"));
        outcome.Code = ExitCode::BadFile;
    }
    return outcome;
}

void AddRegionCommand(CCommandLine& line)
{
    struct COptions
    {
        CRegionRequest Request;
        std::vector<int64_t> Rect;
        std::string Background;
        CCommonOptions Common;
    };
    const auto options = std::make_shared<COptions>();
    CLI::App& command =
        line.AddTolerantCommand({"region", "Writes a rectangle of a level to a picture file, stitched from its tiles.",
                                 "  zel region slide.zel -l 2 -o overview.png\n"
                                 "  zel region slide.zel --rect 8000,6000,1024,768 -c 0 -c 1 -o channels.tif"},
                                [options](const CDocument& document)
                                {
                                    CRegionRequest& request = options->Request;
                                    request.Background = ParseColour(options->Background);
                                    if (!options->Rect.empty())
                                        request.Rect = ParseRect(options->Rect);
                                    request.Values = options->Common.Values();
                                    request.Jobs = options->Common.JobsOfOne();
                                    const CRegionOutcome outcome = WriteRegion(document, request);
                                    Say(outcome.Line);
                                    for (const std::string& remark : outcome.Remarks)
                                        std::cerr << "zel: " << Printable(remark) << '\n';
                                    return outcome.Code;
                                });
    CRegionRequest& request = options->Request;
    AddGroupOption(command, request.Group);
    command.add_option("-l,--level", request.Level, "level; 0 is the finest")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    command
        .add_option("--rect", options->Rect,
                    "X,Y,WIDTH,HEIGHT in pixels of the level, from the picture's left top corner; what lies beside the "
                    "picture is cut off. Default: all of it")
        ->delimiter(',')
        ->expected(4);
    command
        .add_option("-c,--channel", request.Channels,
                    "channel, written with the values that are stored; may be given several times, for a TIFF file "
                    "with a picture for each. Default: all channels, blended in their colours and display limits")
        ->allow_extra_args(false);
    command.add_flag("--blend", request.IsBlended, "blend the channels given by -c");
    AddPositionOptions(command, request.Position);
    AddBackgroundOption(command, options->Background);
    AddStrictOption(command, request.IsStrict, "is filled, not served or undecodable");
    options->Common.AddTo(command);
    command
        .add_option("-o,--output", request.Output,
                    "file to write: NAME.png, or NAME.tif; - for a PNG picture on standard output")
        ->required();
    AddOutputOptions(command);
}

} // namespace HostTool
