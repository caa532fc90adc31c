#ifndef BRIX_ACCESSOR_INTERFACE_H
#define BRIX_ACCESSOR_INTERFACE_H
/*
 * The flat interface through which a host reads microscopy documents: document -> group -> level -> area -> image.
 *
 *   document   one opened file and everything reachable from it
 *   group      one image of the document, with its channels, its Z, T and lambda positions and its pyramid
 *   level      one resolution of a group, by number; 0 is the finest
 *   area       one position in the tile grid of a level, across all channels and positions
 *   image      one stored tile: an area at one channel and one Z, T and lambda position
 *
 * Handles. A handle is an untyped pointer. Only _AC_Open makes something that must be given back, and only _AC_Close
 * frees anything: every other handle stays valid until its document is closed, and asking the same thing twice answers
 * the same address. The _AC_Release functions free nothing. Nothing checks a handle but for NULL, so never use one
 * after _AC_Close.
 *
 * Text. wchar_t with 32 bits a character, terminated by a zero. Channels are named by their number in decimal digits,
 * without sign, blank or leading zero: L"0", L"1", ...
 *
 * Two calls for a sized answer. Call with no buffer (NULL, size 0) to learn the count or size, then with a buffer of at
 * least that. Too small a buffer is no error: the call answers AC_RESULT_SUCCESS, stores what is needed and writes
 * nothing. A function that differs says so.
 *
 * Results. Any function may answer AC_RESULT_FAILURE when the file breaks a rule of its format; the log tells which.
 * Unless a function says otherwise, what its out pointers point at is untouched after a failure.
 *
 * The end of the process. A few kinds of data cannot be survived, by design of the format: the plug-in then logs
 * "abort() called." and calls abort(), so the process ends by SIGABRT and no result comes back. They are:
 *
 *   - on opening: a field of a type that is not known, a volume with a name, a stack in a binary store that the display
 *     flow hides, channels that do not fit their count;
 *   - by _AC_GetImage: frames for all channels at once where channels are not the last dimension;
 *   - by "ChannelInfo", and whatever else asks what a channel's pixels are: a compression, sample format or component
 *     type that is not read, a palette, a colour space or size of pixels without a name here;
 *   - by "AnalysisROIList": regions of interest of a version or of a shape class that is not read;
 *   - by _AC_GetImageBody: tiles of a TIFF directory in JPEG whose tables stand apart;
 *   - by _AC_GetThumbnailData: a compression that is not read.
 *
 * A document may hold one on purpose. So a host that opens files of unknown origin asks in a child process first for
 * all that it is going to ask for, and goes on when the child ends well: docs/host.md shows one. Why a document was
 * refused, and why a process ended, tells the log: set ZEL_LOG to "stderr" or to the name of a file (docs/host.md).
 *
 * Threads. Any number of threads may call at once; calls on one document wait for each other where they must. Only
 * _AC_Close needs the document for itself: no other call on that document may be on its way.
 *
 * This header reads as C99 and as C++. It gives four of its types short names: INT32, UINT64, UINT and BYTE. Other
 * libraries have an INT32 of a different width (jpeglib.h has one). Define BRIX_NO_SHORT_TYPES before the header is
 * included, and it leaves these four names out: nothing in it needs them.
 */

#include <stddef.h>
#include <stdint.h>
#include <wchar.h>

#ifdef __cplusplus
#define AC_STATIC_ASSERT(condition, name) static_assert(condition, #name)
#define AC_ENUM_OF_32_BITS : int32_t
#define AC_DEFAULT(value) = value
extern "C"
{
#else
#define AC_STATIC_ASSERT(condition, name) typedef char name[(condition) ? 1 : -1]
#define AC_ENUM_OF_32_BITS
#define AC_DEFAULT(value)
#endif

#ifdef __GNUC__
#pragma GCC visibility push(default)
#endif

#ifndef BRIX_NO_SHORT_TYPES
    typedef int32_t INT32;
    typedef uint64_t UINT64;
    typedef uint32_t UINT;
    typedef uint8_t BYTE;
#endif

    /* Handles: a general name and, for the same thing, the plug-in's own. */

    typedef void* AC_HFILE;     /**< a document */
    typedef void* AC_HGROUP;    /**< a group of a document */
    typedef void* AC_HAREA;     /**< a position in the tile grid of a level of a group */
    typedef void* AC_HIMAGE;    /**< a stored tile */
    typedef void* AC_HPROPERTY; /**< a property set */

    typedef AC_HFILE AC_HIMG_DOC;
    typedef AC_HGROUP AC_HMULTIDIMIMG;
    typedef AC_HAREA AC_HMULTIDIMTILE;
    typedef AC_HIMAGE AC_HTILE;
    typedef AC_HPROPERTY AC_HPROPSET;

    /** What a function answers. The numbers are shared by a family of plug-ins and never change; several of them are
        never answered by this one. */
    typedef enum AC_Result AC_ENUM_OF_32_BITS
    {
        AC_RESULT_SUCCESS = 0,
        AC_RESULT_INVALID_PARAM = 1,      /**< a wrong argument, name, key or file extension */
        AC_RESULT_FILE_NOT_FOUND = 2,     /**< no such file, or it cannot be opened */
        AC_RESULT_PROPERTY_NOT_FOUND = 3, /**< the document does not have what was asked for */
        AC_RESULT_NO_SECTION = 4,
        AC_RESULT_NO_LUT = 5,                /**< the channel has no colour look-up table */
        AC_RESULT_UNSUPPORTED_OPERATION = 6, /**< this plug-in does not do that */
        AC_RESULT_NO_FRAME = 7,
        AC_RESULT_FAILURE = 8, /**< a rule of the file format is broken, or a failure without a better name */
        AC_INVALID_FRAME = 9,
        AC_RESULT_INSUFFICIENT_BUFFER = 10,
        AC_RESULT_FRAME_NOT_ACQUIRED = 11,
        AC_RESULT_NO_MORE_FRAME = 12, /**< the walk over the images of an area has ended */
        AC_RESULT_INVALID_BLOCK_NUMBER = 13,
        AC_RESULT_FILE_VERSION_INVALID = 14,
        AC_RESULT_ERROR_IN_READ_DATA = 15,
        AC_RESULT_XALAN_TRANSFORMATION_FAILED = 16,
        AC_RESULT_DESERIALIZATION_FAILED = 17,
        AC_RESULT_DESERIALIZED_ELEMENT_LIST_EMPTY = 18,
        AC_RESULT_DESERIALIZED_ELEMENT_EMPTY = 19,
        AC_RESULT_DESERIALIZED_VALUE_LIST_EMPTY = 20,
        AC_RESULT_DESERIALIZED_VALUE_EMPTY = 21,
        AC_RESULT_INVALID_HANDLE_VALUE = 22,
        AC_RESULT_INVALID_AXIS_VALUE = 23,
        AC_RESULT_ALLOCATION_FAILED = 24,
        AC_RESULT_FILE_CORRUPT = 25, /**< the file holds what its reader cannot accept */
        AC_RESULT_FUNCTION_RETURNED_NULL = 26,
        AC_RESULT_ILLEGAL_STATE = 27, /**< the call is wrong at this point: see the function */
        AC_RESULT_INCOMPLETE_FILE = 28,
        AC_RESULT_DATA_NOT_SUPPORTED = 29, /**< the file is sound, but holds data of a kind that is not read */
        AC_RESULT_WRITE_OPEN_FAIL = 30,
        AC_RESULT_WRITE_FAILED = 31,
        AC_RESULT_MISSING_FILE = 32, /**< a file beside the document, which it refers to, is missing */
        AC_RESULT_UNSUPPORTED_COMPRESSION = 33,
        AC_RESULT_PROPERTY_NOT_FOUND_IN_DOM = 34,
        AC_RESULT_IN_USE = 35, /**< a file of the document is being written by another process */

        NUM_OF_AC_RESULT_CODES = 36 /**< how many codes there are; no code itself */
    } AC_Result;

    /** How to open a document; bits that may be joined. */
    typedef enum tagAC_OpenMode
    {
        AC_OM_READ = 0,
        AC_OM_NORMAL = 0,     /**< the same as AC_OM_READ */
        AC_OM_WRITE = 1,      /**< refused: nothing is ever written */
        AC_OM_FORCE = 2,      /**< tolerates irregularities in the metadata that are otherwise refused */
        AC_OM_STREAMING = 4,  /**< refused */
        AC_OM_READ_WRITE = 8, /**< not looked at; opens for reading */
        AC_OM_APPEND = 16     /**< not looked at; opens for reading */
    } AC_OpenMode;

    /** The kinds of value in AC_VALUE. */
    typedef enum AC_ValueType AC_ENUM_OF_32_BITS
    {
        AC_VT_INTEGER = 0, /**< nInteger */
        AC_VT_DOUBLE = 1,  /**< dDouble */
        AC_VT_STRING = 2,  /**< pszString */
        AC_VT_POINT = 3,   /**< point */
        AC_VT_RECT = 4     /**< rRect */
    } AC_ValueType;

    /** The axes along which the images of one area and channel differ. */
    typedef enum AC_AxisType AC_ENUM_OF_32_BITS
    {
        AC_AT_TIME = 0,
        AC_AT_Z = 1,
        AC_AT_LAMBDA = 2
    } AC_AxisType;

    /* Records. Their layout is part of the interface, for 64-bit Linux. */

    typedef struct tagAC_POINT
    {
        int32_t x;
        int32_t y;
    } AC_POINT;

    /** A rectangle, in pixels of its level unless a function says otherwise. */
    typedef struct tagCMN_RECT
    {
        uint64_t x;
        uint64_t y;
        uint64_t width;
        uint64_t height;
    } CMN_RECT;

    /** One value of a property. */
    typedef struct tagAC_VALUE
    {
        AC_ValueType nType; /**< tells which member of `value` holds */
        union tagAC_VALUE_UNION
        {
            int32_t nInteger;
            double dDouble;
            const wchar_t* pszString; /**< the plug-in's own; valid until the document is closed; may be NULL */
            AC_POINT point;
            CMN_RECT rRect;
        } value;
    } AC_VALUE;
    typedef AC_VALUE AC_VALUE_WITH_TYPE;

    /** One named parameter of a request. pValue points at a wide text: each parameter that this header names is one,
       also where it holds a number. Any other key of a property set takes none; where one is given all the same, an int
       is read there. */
    typedef struct tagAC_PARAM_ELEMENT
    {
        const wchar_t* pszKey;
        void* pValue;
    } AC_PARAM_ELEMENT;

    /** The parameters of a request. */
    typedef struct tagAC_PARAM
    {
        int32_t nSize AC_DEFAULT(0); /**< elements at pElements; 0, as in C++ from the start: none */
        AC_PARAM_ELEMENT* pElements;
    } AC_PARAM;
    typedef AC_PARAM AC_PARAMS;

    /** A position on one axis, as an index from 0. */
    typedef struct tagAC_AXIS_INFO
    {
        AC_AxisType nType;
        int64_t nNumber;
    } AC_AXIS_INFO;

    typedef struct tagAC_CUSTOM_DATA_INFO
    {
        const wchar_t* pszName;        /**< the key for _AC_GetCustomData; the plug-in's own */
        const wchar_t* pszDescription; /**< for people; the plug-in's own */
    } AC_CUSTOM_DATA_INFO;

    typedef struct tagCMN_VERSION
    {
        int32_t unMajor;
        int32_t unMinor;
    } CMN_VERSION;

    typedef struct tagCMN_VERSION_INFO
    {
        CMN_VERSION base;
        CMN_VERSION product;
    } CMN_VERSION_INFO;

    AC_STATIC_ASSERT(sizeof(wchar_t) == 4, AC_wide_characters_have_32_bits);
    AC_STATIC_ASSERT(sizeof(void*) == 8, AC_pointers_have_64_bits);
    AC_STATIC_ASSERT(sizeof(AC_Result) == 4, AC_Result_has_32_bits);
    AC_STATIC_ASSERT(sizeof(AC_ValueType) == 4, AC_ValueType_has_32_bits);
    AC_STATIC_ASSERT(sizeof(AC_AxisType) == 4, AC_AxisType_has_32_bits);

    AC_STATIC_ASSERT(sizeof(AC_POINT) == 8, AC_POINT_size);
    AC_STATIC_ASSERT(offsetof(AC_POINT, x) == 0, AC_POINT_x_offset);
    AC_STATIC_ASSERT(offsetof(AC_POINT, y) == 4, AC_POINT_y_offset);

    AC_STATIC_ASSERT(sizeof(CMN_RECT) == 32, CMN_RECT_size);
    AC_STATIC_ASSERT(offsetof(CMN_RECT, x) == 0, CMN_RECT_x_offset);
    AC_STATIC_ASSERT(offsetof(CMN_RECT, y) == 8, CMN_RECT_y_offset);
    AC_STATIC_ASSERT(offsetof(CMN_RECT, width) == 16, CMN_RECT_width_offset);
    AC_STATIC_ASSERT(offsetof(CMN_RECT, height) == 24, CMN_RECT_height_offset);

    AC_STATIC_ASSERT(sizeof(AC_VALUE) == 40, AC_VALUE_size);
    AC_STATIC_ASSERT(offsetof(AC_VALUE, nType) == 0, AC_VALUE_nType_offset);
    AC_STATIC_ASSERT(offsetof(AC_VALUE, value) == 8, AC_VALUE_value_offset);
    AC_STATIC_ASSERT(sizeof(((AC_VALUE*)0)->value) == 32, AC_VALUE_value_size);

    AC_STATIC_ASSERT(sizeof(AC_PARAM) == 16, AC_PARAM_size);
    AC_STATIC_ASSERT(offsetof(AC_PARAM, nSize) == 0, AC_PARAM_nSize_offset);
    AC_STATIC_ASSERT(offsetof(AC_PARAM, pElements) == 8, AC_PARAM_pElements_offset);

    AC_STATIC_ASSERT(sizeof(AC_PARAM_ELEMENT) == 16, AC_PARAM_ELEMENT_size);
    AC_STATIC_ASSERT(offsetof(AC_PARAM_ELEMENT, pszKey) == 0, AC_PARAM_ELEMENT_pszKey_offset);
    AC_STATIC_ASSERT(offsetof(AC_PARAM_ELEMENT, pValue) == 8, AC_PARAM_ELEMENT_pValue_offset);

    AC_STATIC_ASSERT(sizeof(AC_AXIS_INFO) == 16, AC_AXIS_INFO_size);
    AC_STATIC_ASSERT(offsetof(AC_AXIS_INFO, nType) == 0, AC_AXIS_INFO_nType_offset);
    AC_STATIC_ASSERT(offsetof(AC_AXIS_INFO, nNumber) == 8, AC_AXIS_INFO_nNumber_offset);

    AC_STATIC_ASSERT(sizeof(AC_CUSTOM_DATA_INFO) == 16, AC_CUSTOM_DATA_INFO_size);
    AC_STATIC_ASSERT(offsetof(AC_CUSTOM_DATA_INFO, pszName) == 0, AC_CUSTOM_DATA_INFO_pszName_offset);
    AC_STATIC_ASSERT(offsetof(AC_CUSTOM_DATA_INFO, pszDescription) == 8, AC_CUSTOM_DATA_INFO_pszDescription_offset);

    AC_STATIC_ASSERT(sizeof(CMN_VERSION) == 8, CMN_VERSION_size);
    AC_STATIC_ASSERT(offsetof(CMN_VERSION, unMajor) == 0, CMN_VERSION_unMajor_offset);
    AC_STATIC_ASSERT(offsetof(CMN_VERSION, unMinor) == 4, CMN_VERSION_unMinor_offset);

    AC_STATIC_ASSERT(sizeof(CMN_VERSION_INFO) == 16, CMN_VERSION_INFO_size);
    AC_STATIC_ASSERT(offsetof(CMN_VERSION_INFO, base) == 0, CMN_VERSION_INFO_base_offset);
    AC_STATIC_ASSERT(offsetof(CMN_VERSION_INFO, product) == 8, CMN_VERSION_INFO_product_offset);

    /* ---- Documents and groups ---- */

    /** Does nothing and answers AC_RESULT_SUCCESS; no other function asks for it. */
    AC_Result _AC_Connect(void);

    /** Does nothing and answers AC_RESULT_SUCCESS. */
    AC_Result _AC_Disconnect(void);

    /** Whether the plug-in is willing to try this file: 1 for any name, 0 for NULL. Nothing is opened and the extension
       is not looked at; _AC_Open is what refuses. */
    int _AC_CanAccess(const wchar_t* fileName);

    /**
     * Opens a document for reading, reads its metadata and builds its groups; pixels are not touched.
     *
     * fileName: an absolute name, or one with a folder ("./slide.zel"): a name without "/" is refused.
     * mode: of tagAC_OpenMode. AC_OM_WRITE and AC_OM_STREAMING are refused; AC_OM_FORCE tolerates irregular metadata.
     * phImgDoc: gets the document, which the host must give back by _AC_Close. NULL after a failure, unless the
     *     arguments themselves were refused, which leaves it untouched.
     *
     * AC_RESULT_INVALID_PARAM: a NULL argument, a refused mode, a file extension that is not this format's.
     * AC_RESULT_FILE_NOT_FOUND: no such file. AC_RESULT_FILE_CORRUPT, AC_RESULT_FAILURE: not a sound document, or a
     * group without any level. AC_RESULT_MISSING_FILE: a store beside the document is missing.
     * AC_RESULT_DATA_NOT_SUPPORTED: a kind of data that is not read. AC_RESULT_IN_USE: a store is being written.
     */
    AC_Result _AC_Open(const wchar_t* fileName, int mode, AC_HIMG_DOC* phImgDoc);

    /** Frees a document and everything that was had from it: all its handles, and all texts and buffers that were the
        plug-in's own. No other call on the document may be on its way. AC_RESULT_INVALID_PARAM for NULL. */
    AC_Result _AC_Close(AC_HIMG_DOC hImgDoc);

    /** The number of groups; 0 for a document without images. AC_RESULT_INVALID_PARAM for a NULL argument. */
    AC_Result _AC_GetNumOfGroups(AC_HIMG_DOC hImgDoc, int32_t* numOfGroups);

    /** One group, by number from 0. AC_RESULT_INVALID_PARAM: a NULL argument, a number below 0 or beyond the last. */
    AC_Result _AC_GetGroup(AC_HIMG_DOC hImgDoc, int brixGroupID, AC_HMULTIDIMIMG* phMultiDimImg);

    /** Frees nothing: the group lives as long as its document. AC_RESULT_INVALID_PARAM for NULL. */
    AC_Result _AC_ReleaseGroup(AC_HMULTIDIMIMG hMultiDimImg);

    /* ---- Levels and areas ---- */

    /** The number of resolutions of a group, at least 1. AC_RESULT_INVALID_PARAM for a NULL argument. */
    AC_Result _AC_GetNumOfLevels(AC_HMULTIDIMIMG hMultiDimImg, int* numOfLevels);

    /**
     * The rectangle of a level, in pixels of that level: width and height are those of its whole tiles, so they may
     * reach beyond the picture at its right and bottom edges.
     *
     * AC_RESULT_INVALID_PARAM: a NULL argument, or no level of that number. AC_RESULT_PROPERTY_NOT_FOUND: the document
     * has no data for this level, while it has some for others.
     */
    AC_Result _AC_GetLevelImageSize(AC_HMULTIDIMIMG hMultiDimImg, int levelID, CMN_RECT* pRect);

    /**
     * The number of areas of a level: the rows of its tile grid times the columns.
     *
     * levelID must be below the number of levels. AC_RESULT_INVALID_PARAM for a NULL argument;
     * AC_RESULT_PROPERTY_NOT_FOUND, with 0 areas, if the document has no data for this level.
     */
    AC_Result _AC_GetNumOfArea(AC_HMULTIDIMIMG hMultiDimImg, int levelID, int32_t* numOfAreas);

    /**
     * One area of a level. Areas are numbered from 0, row by row; area 0 is the upper left tile of those that exist,
     * which need not lie at the picture's origin (see _AC_GetAreaPosition).
     *
     * A number beyond the grid is not refused: it gives an area below the last row, which has no images.
     * AC_RESULT_INVALID_PARAM: a NULL argument, or no level of that number. AC_RESULT_FAILURE: an area number of more
     * than 32 bits, or no data for this level.
     */
    AC_Result _AC_GetArea(AC_HMULTIDIMIMG hMultiDimImg, int levelID, uint64_t areaID, AC_HMULTIDIMTILE* phArea);

    /** Frees nothing. AC_RESULT_INVALID_PARAM for NULL. */
    AC_Result _AC_ReleaseArea(AC_HMULTIDIMTILE hMultiDimTile);

    /** The rectangle of an area, in pixels of its level. Tiles left of or above the origin have an x or y that wrapped
        around at 32 bits. AC_RESULT_INVALID_PARAM for a NULL area; pRect must not be NULL. */
    AC_Result _AC_GetAreaPosition(AC_HMULTIDIMTILE hMultiDimTile, CMN_RECT* pRect);

    /* ---- Images ---- */

    /**
     * The stored tile of an area at one channel and one position on each axis.
     *
     * channelID: the channel's number as decimal text.
     * ztlCoordIndexes: positions, numOfElesInZtlCoordIndexes of them, in any order; may be NULL if there are none. An
     * axis of one position may be left out, and position 0 of an axis that the group does not have is tolerated.
     * phDeepZoomTile: gets the image, or NULL.
     *
     * AC_RESULT_SUCCESS with NULL in *phDeepZoomTile: the position is a valid one, and nothing is stored there. So test
     * the handle and not the result alone. AC_RESULT_INVALID_PARAM: a NULL argument, a channel or position that the
     * group does not have, an axis of several positions left out. AC_RESULT_MISSING_FILE, AC_RESULT_FILE_CORRUPT,
     * AC_RESULT_DATA_NOT_SUPPORTED, AC_RESULT_IN_USE: as with _AC_Open, for a store that is read only now.
     */
    AC_Result _AC_GetImage(AC_HMULTIDIMTILE hMultiDimTile, const wchar_t* channelID, AC_AXIS_INFO* ztlCoordIndexes,
                           int numOfElesInZtlCoordIndexes, AC_HTILE* phDeepZoomTile);

    /**
     * The image that follows, in the order of the store, the one that was last had from this area by _AC_GetImage or by
     * this function. Reading tiles in this order is the fastest.
     *
     * channelIds: the channels of interest as decimal texts, numOfChannels of them, at least 1.
     * ztlCoordIndexes: positions to stay at; an axis that is left out is walked.
     *
     * AC_RESULT_NO_MORE_FRAME: the walk has ended. AC_RESULT_ILLEGAL_STATE: there is no image to go on from: call
     * _AC_GetImage first, also after a walk has ended. AC_RESULT_INVALID_PARAM: a NULL argument, a negative count, a
     * channel or position that the group does not have. AC_RESULT_FAILURE: no channels.
     */
    AC_Result _AC_GetNextImage(AC_HAREA hMultiDimTile, const wchar_t** channelIds, int numOfChannels,
                               AC_AXIS_INFO* ztlCoordIndexes, int numOfZtlCoordIndexes, AC_HIMAGE* phDeepZoomTile);

    /**
     * The bytes of an image. A compressed one (see "format" of "ChannelInfo") is handed over as it is stored, whole:
     * the bytes are a JPEG, JPEG 2000, PNG or BMP stream. It is whole: tables that a TIFF directory keeps apart from
     * its JPEG strips are put into it. Of a raw one any rectangle is served: its rows from top to bottom, without
     * padding, each pixel with its components side by side, little-endian.
     *
     * pRect: what to read, in pixels of the image; all four fields 0 for the whole image.
     * buffer, bufferSize: where to; NULL and 0, or a size that is too small, only ask for the size, and nothing is
     * read. sizeFilledOrNeeded: gets the number of bytes. After a failure while reading it is 0 or what it was.
     *
     * AC_RESULT_INVALID_PARAM: a NULL argument, a rectangle not within the image, or a part of a compressed image.
     * AC_RESULT_FAILURE: a rectangle or buffer of more than 32 bits, or bytes that cannot be read from the store.
     */
    AC_Result _AC_GetImageBody(AC_HTILE hDeepZoomTile, CMN_RECT* pRect, uint8_t* buffer, uint64_t bufferSize,
                               uint64_t* sizeFilledOrNeeded);

    /** Frees nothing; the image can still be read. AC_RESULT_INVALID_PARAM for NULL. */
    AC_Result _AC_ReleaseImage(AC_HTILE hDeepZoomTile);

    /** The rectangle of an image, in pixels of its level. Every image has the size of a full tile, also at the right
       and bottom edges. AC_RESULT_INVALID_PARAM for a NULL argument. */
    AC_Result _AC_GetImageSize(AC_HIMAGE hImage, CMN_RECT* pRect);

    /**
     * The position of an image on each axis, in the order Z, time, lambda, by the two-call protocol: maxAllowedEles is
     * the room at ztlIndexes, *filledOrNeededNumOfEles gets the number of axes. AC_RESULT_INVALID_PARAM for a NULL
     * image or NULL count.
     */
    AC_Result _AC_GetImageAxis(AC_HTILE hDeepZoomTile, AC_AXIS_INFO* ztlIndexes, int maxAllowedEles,
                               int* filledOrNeededNumOfEles);

    /** The channel of an image as decimal text, by the two-call protocol; channelIdArrSize and *channelIdSize count
        characters with the terminator. AC_RESULT_INVALID_PARAM for a NULL image or NULL size. */
    AC_Result _AC_GetImageChannelId(AC_HTILE hDeepZoomTile, wchar_t* channelID, int channelIdArrSize,
                                    int* channelIdSize);

    /** The name of an axis for people, by the two-call protocol; nBufferSize and *pnSize count characters with the
        terminator. AC_RESULT_INVALID_PARAM for an axis type that does not exist. */
    AC_Result _AC_GetAxisName(AC_AxisType axisType, wchar_t* pBuffer, int nBufferSize, int* pnSize);

    /* ---- Properties ---- */

    /*
     * The property sets, each with its parameters and keys. A key has one value of its type; "texts" and "points" have
     * any number, also 0. Where a text does not say what it is, it is for people, and may be "" when the document does
     * not tell. A key that the document may leave out says so.
     *
     * Sets of _AC_GetAreaProperty:
     *
     * "SystemInfo" of the document
     *     name           text     the microscope
     *     version        text     that of the microscope and the build of the program that wrote: "2.1 (Build 1)"
     *     deviceName     text     always ""
     *     userName       text     the author
     * "UserComment" of the document
     *     comment        text     about the document
     * "IdInfo" of the document
     *     familyId       text     what the document has in common with others
     * "GroupName" of the group
     *     name           text     never ""
     * "CreationDateTime" of the group
     *     dateTime       text     that of the document, else that of the group, in UTC: "2024-02-29T12:00:00+00:00"
     * "UpdateDateTime" of the group
     *     dateTime       text     that of the document's last change, else that of the group's creation
     *     dataTime       text     the same: misspelled once, and kept
     * "WorkInfo" of the group
     *     name           text     of the experiment; left out if not told
     *     sampleName     text     left out if not told
     *     sampleComment  text     left out if not told
     * "EnabledChannelIdList" of the group
     *     id             texts    the channels, in ascending order; at least one
     * "ImageChannelIdList" of the group, with channelId
     *     id             text     that channel; no such channel is AC_RESULT_INVALID_PARAM
     * "ChannelInfo" of the group, with channelId
     *     name           text     of the channel
     *     depth          integer  bytes of a pixel, all its components together
     *     bitCount       integer  bits that the largest value uses; -1 if that is not known
     *     format         text     how an image's bytes are packed, one of "RAW" "JPEG" "J2K" "PNG" "BMP"
     *     compression    text     one of "NONE", whatever the compression: that is told by format
     *     colorSpace     text     one of "GRAYSCALE" "RGB" "BGR"
     * "LUTInfo" of the group, with channelId and, if wanted, planeName ("all")
     *     shadow         integer  the value that is shown as black, at least 0
     *     highlight      integer  the value that is shown at its brightest, at most 255 for depth 1, else 65535
     * "Axes" of the group
     *     axisName       texts    those with several positions, one of "ZSTACK" "TIMELAPSE" "LAMBDA"
     * "AxisInfo" of the group, with axisName
     *     start          double   the first position, in micrometres (Z), seconds (time) or nanometres (lambda)
     *     end            double   the last position, likewise
     *     step           double   from one position to the next, likewise; 0 where they are not evenly spaced
     *     maxSize        integer  how many positions there are
     *     units          text     one of "10^-6m^1" (Z) "10^-9m^1" (lambda); NULL for time
     * "ObjectiveLensInfo" of the group
     *     name           text     of the lens
     *     magnification  double   as 20 for "20x"; 0 if not told
     *     immersion      text     one of "empty" "air" "water" "oil" "glycerol" "silicone" "oil_special" "unknown"
     *                             "HYALIDE-K9" "glycerol_100" ""
     *     na             double   numerical aperture; 0 if not told
     *     wd             double   working distance, in millimetres; 0 if not told
     *     refraction     double   refractive index of the immersion; 0 if not told
     * "XYStagePosition" of the group
     *     position       point    in nanometres
     * "AnalysisROIList" of the group
     *     id             texts    the regions of interest
     * "ImagingROIList" of the group
     *     id             texts    always none, so "ImagingROIInfo" always answers AC_RESULT_FAILURE
     * "PixelLength" of the level
     *     xLength        double   the width of a pixel of this level, in micrometres; 0 if not calibrated
     *     yLength        double   its height, likewise
     * "ImageSize" of the area
     *     size           point    width and height of an image, in pixels
     * "AnalysisROIInfo" of the area, with roiId
     *     name           text     of the region
     *     type           text     one of "CLIP" (a surface) "LINE" "POINT"
     *     shape          text     one of "POLYGON" "ELLIPSE" "LINE" "POINT"
     *     rotation       double   always 0: the points are turned already
     *     data           points   the vertices, in pixels of the level from the area's upper left corner; of an ellipse
     *                             the corners of the rectangle around it, in order, which may be turned
     *
     * Sets of _AC_GetFrameProperty:
     *
     * "AxisPosition" of the image, with axisName
     *     position       double   in micrometres (Z), milliseconds (time) or nanometres (lambda)
     * "JpegTables" of the image
     *     bufPtr         bytes    typed AC_VT_STRING, yet no text: pszString is where `bufSize` bytes begin, without a
     *                             terminator, the plug-in's own until the document is closed
     *     bufSize        integer  the number of bytes
     * "StimulationROIList" of the image
     *     id             texts    always none, so "StimulationROIInfo" always answers AC_RESULT_FAILURE
     *
     * The parameters: channelId is a channel as "EnabledChannelIdList" lists it, axisName one of "ZSTACK", "TIMELAPSE"
     * and "LAMBDA", in full, roiId a region as "AnalysisROIList" lists it.
     */

    /**
     * A property set of an area, or of the level, group or document above it: the key decides, see the table. To ask
     * for a group's property, ask any area of that group; for a document's, any area.
     *
     * propsetParams: the parameters that the table names, each a wide text; NULL for a key without any. A key with
     * parameters must not get NULL.
     * phPropset: gets the set, which lives until the document is closed; the same request answers the same set.
     *
     * AC_RESULT_INVALID_PARAM: a NULL argument, an unknown key, a wrong parameter. AC_RESULT_PROPERTY_NOT_FOUND: the
     * document does not tell (lens, stage position, another planeName). AC_RESULT_ILLEGAL_STATE: display limits of
     * pixels that have none. AC_RESULT_FAILURE: parameters for a key that takes none, or a rule of the format is
     * broken.
     */
    AC_Result _AC_GetAreaProperty(AC_HMULTIDIMTILE hMultiDimTile, const wchar_t* propsetKey,
                                  const AC_PARAMS* propsetParams, AC_HPROPSET* phPropset);

    /** A property set of an image; otherwise as _AC_GetAreaProperty. AC_RESULT_ILLEGAL_STATE: "JpegTables" of an image
        that is not a JPEG with tables apart. */
    AC_Result _AC_GetFrameProperty(AC_HTILE hDeepZoomTile, const wchar_t* propsetKey, const AC_PARAMS* propsetParams,
                                   AC_HPROPSET* phPropset);

    /**
     * The values of one key of a property set, by the two-call protocol: sizeOfListOfValues is the room at
     * listOfValues, *numOfValues gets the number of values, which may be 0. Texts in the values are the plug-in's own
     * and live until the document is closed. AC_RESULT_INVALID_PARAM, with 0 in *numOfValues: a NULL argument, a
     * negative size, no such key.
     */
    AC_Result _AC_GetPropertyValue(AC_HPROPSET hPropSet, const wchar_t* propertyKey, AC_VALUE_WITH_TYPE* listOfValues,
                                   int sizeOfListOfValues, int* numOfValues);

    /** The keys of a property set in ascending order, by the two-call protocol. The texts are the plug-in's own and
       live until the document is closed. AC_RESULT_INVALID_PARAM: a NULL argument, a negative size. */
    AC_Result _AC_GetPropertyKeyList(AC_HPROPSET hPropset, const wchar_t** keys, int sizeOfKeysArr, int* numOfKeys);

    /** Frees nothing. AC_RESULT_INVALID_PARAM for NULL. */
    AC_Result _AC_ReleaseProperty(AC_HPROPSET hPropertySet);

    /* ---- Versions, look-up tables and custom data ---- */

    /** The version of the file format, as up to four numbers that fill the record from its end: 2.1 is product 2 and 1,
        base 0 and 0. AC_RESULT_INVALID_PARAM for a NULL argument. */
    AC_Result _AC_GetFileVersion(AC_HIMG_DOC hImgDoc, CMN_VERSION_INFO* version);

    /**
     * The colour look-up table of a grey channel, by the two-call protocol: tableBufferSize is the room at each of the
     * three tables, which are all given or all NULL; *numOfEles gets the length of a table.
     *
     * AC_RESULT_NO_LUT: the channel has no table, as every colour channel. AC_RESULT_INVALID_PARAM: a NULL argument, no
     * such channel.
     */
    AC_Result _AC_GetLUT(AC_HMULTIDIMTILE hMultiDimTile, wchar_t* channelID, int* pTableBufferR, int* pTableBufferG,
                         int* pTableBufferB, int tableBufferSize, int* numOfEles);

    /** The names and descriptions of the custom data, by the two-call protocol. The texts are the plug-in's own.
        AC_RESULT_INVALID_PARAM for a NULL document or count. */
    AC_Result _AC_GetSupportedCustomData(AC_HIMG_DOC hImgDoc, AC_CUSTOM_DATA_INFO* buffer, int bufferSize,
                                         int* numOfEles);

    /**
     * One item of custom data, by the two-call protocol in bytes; 0 bytes if the document does not have it.
     *
     * Items of _AC_GetCustomData:
     *
     * "CroppedLevelImageSize" of the document, with groupId and levelId
     *     data           integers  four of 32 bits with a sign: x and y, then width and height of the picture of a
     *                              level, in its pixels, without what its outermost tiles have too much
     * "SlideImage" of the document
     *     data           bytes     the overview picture of the whole slide: a picture file, as stored
     *
     * params: must not be NULL; a record of size 0 where there are no parameters. groupId and levelId stand in this
     * order and are decimal texts; a level is one that the group has.
     *
     * AC_RESULT_INVALID_PARAM: a NULL argument, an unknown key, wrong parameters. AC_RESULT_FAILURE: no such group.
     */
    AC_Result _AC_GetCustomData(AC_HIMG_DOC hImgDoc, wchar_t* key, const AC_PARAMS* params, uint8_t* buffer,
                                uint64_t bufferSize, uint64_t* numOfElesPopulated);

    /**
     * One display property of a group, by name, as narrow text without a terminator; numbers are decimal.
     *
     * Texts of _AC_GetGroupCustomData, first those of the group itself:
     *
     * "ZEL_GroupType"             what kind of picture it is, one of "Default image" "Overview image" "Sample mask"
     *                             "Focus image" "EFI sharpness map" "EFI height map" "EFI texture map" "EFI stack"
     *                             "Macro image" "Review Mode"
     *                             "Vector layer holding shapes showing x / y / z focus positions"
     *                             "FFT or DFT transformed grayscale image" "Kymogram" "Maximum intensity projection"
     *                             "Unknown"
     * "ZEL_GroupOrder"            the number of its layer among those that are shown, from 0 at the bottom; "-1" for a
     *                             layer that is hidden; "" without a layer
     * "ZEL_GroupRenderOperation"  the number of the way in which it is drawn over the layers below it; "0" if not told
     * "ZEL_GroupTransparency"     a number; "1" if not told
     * "ZEL_GroupFrameOrigin"      where the picture begins: "x,y" in the units below
     * "ZEL_GroupFrameScale"       the size of a pixel: "x,y" in the units below
     * "ZEL_GroupFrameUnit"        one of "MILLIMETER" "MICROMETER" "NANOMETER" "PICOMETER" "PIXEL"
     * "ZEL_GroupFrameYUnit"       one of "MILLIMETER" "MICROMETER" "NANOMETER" "PICOMETER" "PIXEL"
     * "ZEL_GroupAxis0"            one of "X" "Y" "Z" "T" "L" "Channel" "Phase" "Undefined" "Invalid"
     * "ZEL_GroupAxis1"            one of "X" "Y" "Z" "T" "L" "Channel" "Phase" "Undefined" "Invalid"
     * "ZEL_GroupExposureTime"     a whole number of the microscope's unit: the format names none
     *
     * Those of the document's display, the same for all groups:
     *
     * "ZEL_GroupPlaneUnit"        one of "MILLIMETER" "MICROMETER" "NANOMETER" "PICOMETER" "PIXEL"
     * "ZEL_GroupPlaneYUnit"       one of "MILLIMETER" "MICROMETER" "NANOMETER" "PICOMETER" "PIXEL"
     * "ZEL_GroupPlaneOrigin"      where the display begins: "x,y" in the units above
     * "ZEL_GroupPlaneScale"       the size of a pixel of it: "x,y" in the units above
     * "ZEL_GroupPlaneSize"        its rectangle: "left,top,right,bottom" in pixels
     *
     * Unlike everywhere else nBufferSize is not looked at: first call with pBuffer NULL to learn the size in bytes. Let
     * *pnSize be 0 before: a document without a display leaves it as it is where the unit of the plane is asked for.
     * params is needed for "ZEL_GroupExposureTime" only, whose first element's value is the channel as decimal text.
     * AC_RESULT_PROPERTY_NOT_FOUND: the document does not tell. AC_RESULT_FAILURE: it holds a text without a name here.
     * AC_RESULT_INVALID_PARAM: a NULL group or name, an unknown name.
     */
    AC_Result _AC_GetGroupCustomData(AC_HMULTIDIMIMG hMultiDimImg, wchar_t* pszGroupCustomDataName,
                                     const AC_PARAM* params, uint8_t* pBuffer, uint64_t nBufferSize, uint64_t* pnSize);

    /** The thumbnail as a BMP file in memory: call with NULL to learn its size in bytes. Here too small a buffer is an
        error, AC_RESULT_INVALID_PARAM. AC_RESULT_DATA_NOT_SUPPORTED: there is none, or it is stored in a form that is
        not read. */
    AC_Result _AC_GetThumbnailData(AC_HIMG_DOC hImgDoc, uint8_t* buffer, uint32_t bufferSize, uint32_t* numOfEles);

    /* ---- The files of a document, by name ---- */

    /** The number of files a document is made of, itself included. The document is opened and closed for it, so all
       that _AC_Open answers may come back. AC_RESULT_INVALID_PARAM for a NULL argument. */
    AC_Result _AC_GetNumOfFiles(const wchar_t* pszFileName, uint32_t* pnNumOfFiles);

    /**
     * The name of one file of a document: number 0 is the document itself, by the name given.
     *
     * With pszUnitFileName NULL, *pnUnitFileNameSize gets the needed size in bytes, terminator included; otherwise it
     * tells the room at pszUnitFileName in bytes; too little room gives an empty text. AC_RESULT_INVALID_PARAM: a NULL
     * argument, a number beyond the last file, a document name without a dot.
     */
    AC_Result _AC_GetFileName(const wchar_t* pszFileName, uint32_t nUnitNumber, wchar_t* pszUnitFileName,
                              uint32_t* pnUnitFileNameSize);

    /** Not supported: AC_RESULT_UNSUPPORTED_OPERATION, whatever the arguments. */
    AC_Result _AC_GetFileId(const wchar_t* pszFileName, wchar_t* pszFileId);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif

#ifdef __cplusplus
}
#endif

#endif
