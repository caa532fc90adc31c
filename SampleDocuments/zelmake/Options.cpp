#include "SampleDocuments/zelmake/Options.h"

namespace ZelMake
{

using namespace SampleDocuments;

namespace
{

const std::map<std::string, uint32_t> Compressions = {{"raw", StoreCompression::Raw},
                                                      {"jpeg", StoreCompression::Jpeg},
                                                      {"j2k", StoreCompression::J2k},
                                                      {"png", StoreCompression::Png},
                                                      {"bmp", StoreCompression::Bmp}};

const std::set<std::string> Stores = {"kor", "ome-tiff", "tiff", "document"};

constexpr uint32_t LargestTile = 16384;
constexpr uint32_t MostFrames = 10000;

} // namespace

void Describe(CLI::App& parser, COptions& options)
{
    CSlideOptions& slide = options.Slide;
    parser
        .add_option("document", options.Document,
                    "The document to write, NAME.zel. Its pixels go to _NAME_/stack1, stack2, ... beside it")
        ->required()
        ->type_name("NAME.zel");

    parser
        .add_option("--picture", options.Picture,
                    "Picture to make the slide of: PNG, JPEG or TIFF. Default: one is drawn")
        ->type_name("FILE")
        ->group("What it shows");
    parser.add_option("--draw", options.DrawnSize, "Width and height of the drawn picture")
        ->expected(2)
        ->type_name("W H")
        ->check(CLI::Range(1u, 10000u))
        ->capture_default_str()
        ->group("What it shows");
    parser.add_option("--grow", slide.Grow, "Make the slide N pictures wide and high, each one mirrored")
        ->type_name("N")
        ->check(CLI::Range(1u, 1000000u))
        ->group("What it shows");
    parser
        .add_flag("--whole-tiles", slide.IsCutToWholeTiles,
                  "Cut the picture to whole tiles first: then a grown slide has few different ones and is made fast")
        ->group("What it shows");
    parser.add_flag("--grey", slide.IsGrey, "Grey pixels, whatever the picture has")->group("What it shows");

    const auto addCount = [&parser](const char* name, uint32_t& count, const char* text)
    { parser.add_option(name, count, text)->type_name("N")->check(CLI::Range(1u, MostFrames))->group("Frames"); };
    addCount("--z", slide.NumOfZ, "Focal planes; the middle one is sharp");
    addCount("--t", slide.NumOfT, "Points in time; the picture moves");
    addCount("--lambda", slide.NumOfLambdas, "Wavelengths; the picture darkens");
    addCount("--channels", slide.NumOfChannels, "Channels; above 1 they are grey, each of one colour of the picture");
    addCount("--stacks", slide.NumOfStacks, "Stacks in the document, side by side");

    parser
        .add_option(
            "--store", options.Store,
            "Where the pixels are kept: kor, a binary store; ome-tiff, a TIFF store with XML; tiff, one without; "
            "document, directories of the document itself, which has one level then")
        ->type_name("KIND")
        ->check(CLI::IsMember(Stores))
        ->capture_default_str()
        ->group("How it is stored");
    parser.add_option("--tile", options.TileSize, "Width and height of a tile")
        ->expected(2)
        ->each([&options](const std::string&) { options.IsTileSizeGiven = true; })
        ->type_name("W H")
        ->check(CLI::Range(1u, LargestTile))
        ->capture_default_str()
        ->group("How it is stored");
    parser
        .add_option("--levels", options.NumOfLevels, "Levels of the pyramid. Default: down to the one of a single tile")
        ->type_name("N")
        ->check(CLI::Range(1u, 100u))
        ->group("How it is stored");
    parser.add_option("--compression", options.Compression, "Compression of the tiles: raw, jpeg, j2k, png or bmp")
        ->type_name("NAME")
        ->check(CLI::IsMember(Compressions))
        ->capture_default_str()
        ->group("How it is stored");
    parser.add_option("--quality", slide.Quality, "Of jpeg and j2k, 1 to 100; j2k loses nothing at 100")
        ->type_name("Q")
        ->check(CLI::Range(1u, 100u))
        ->capture_default_str()
        ->group("How it is stored");
    parser.add_option("--bits", slide.Bits, "Bits per sample: 8, or 16 for raw, j2k and png")
        ->type_name("8|16")
        ->check(CLI::IsMember({8, 16}))
        ->capture_default_str()
        ->group("How it is stored");
    parser
        .add_option("--strips", options.RowsPerStrip,
                    "TIFF: strips of N rows in the place of tiles. In a document that is the default, with one strip "
                    "for jpeg")
        ->type_name("N")
        ->check(CLI::Range(1u, 1000000u))
        ->group("How it is stored");
    parser.add_flag("--one-strip", options.IsOneStrip, "TIFF: one strip for each directory")->group("How it is stored");
    parser.add_flag("--bigtiff", slide.IsBigTiff, "A TIFF store that may be larger than 4 GB")
        ->group("How it is stored");
    parser.add_flag("--bgr", slide.IsBgr, "Raw colour pixels with blue first")->group("How it is stored");
    parser
        .add_flag("--own-bytes", slide.HasEachTileItsOwnBytes,
                  "With --grow: no tiles share their bytes, so that the store is as large as that of a scanned slide")
        ->group("How it is stored");

    Describe(parser, options.Told);
    parser
        .add_option(
            "--describe", options.Description,
            "Describe all of the document in a JSON file: docs/zelmake.md tells its keys, and "
            "SampleDocuments/examples/everything.json has nearly all of them. The options below, but for those of what "
            "it tells, hold for whatever the file leaves open")
        ->type_name("FILE.json");
    parser.add_flag("--json", options.IsReportJson, "Report what was written as JSON");
    parser.add_flag(
        "--force", options.IsForced,
        "Replace a document, and the folder beside it, that this program did not write or cannot tell it did");
}

void CheckTogether(const CLI::App& parser, const COptions& options)
{
    if (options.Description.empty())
        return;
    for (const CLI::Option* option : parser.get_options())
        if (option->get_group() == GroupOfTold && option->count() > 0)
            throw CSampleError(option->get_name() + ": does not go with --describe; say it in the file");
}

namespace
{

/// What the store's kind and the options about strips say together.
void ChooseStorage(CSlideOptions& slide, const COptions& options)
{
    const bool isTiff = options.Store != "kor", isDocument = options.Store == "document";
    if (!isTiff && (options.IsOneStrip || options.RowsPerStrip != 0))
        throw CSampleError("--strips and --one-strip: are for TIFF; add --store ome-tiff, tiff or document");
    if (slide.IsBigTiff && (!isTiff || isDocument))
        throw CSampleError("--bigtiff: is for TIFF stores; add --store ome-tiff or --store tiff");
    slide.Storage = isDocument ? StackStorage::InDocument
                    : isTiff   ? StackStorage::TiffStore
                               : StackStorage::BinaryStore;
    slide.HasXml = options.Store == "ome-tiff";
    slide.RowsPerStrip = options.IsOneStrip ? Stack::OneStrip : options.RowsPerStrip;
    if (isDocument && slide.RowsPerStrip == 0 && !options.IsTileSizeGiven)
        slide.RowsPerStrip = UsualRowsPerStrip(slide);
}

} // namespace

CSlideOptions SlideOptionsOf(const COptions& options)
{
    CSlideOptions slide = options.Slide;
    slide.TileWidth = options.TileSize[0];
    slide.TileHeight = options.TileSize[1];
    slide.Compression = Compressions.at(options.Compression);
    if (options.NumOfLevels != 0)
        slide.NumOfLevels = options.NumOfLevels;
    if (slide.IsBgr && slide.Compression != StoreCompression::Raw)
        throw CSampleError("--bgr: is for raw pixels; add --compression raw");
    ChooseStorage(slide, options);
    return slide;
}

} // namespace ZelMake
