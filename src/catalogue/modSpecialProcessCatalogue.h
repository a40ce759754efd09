// The catalogue of special processes: number, name, parameters and library call of each.
// Room: catalogue.
//
// The numbers are stored in job files and must never change.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <variant>

class ImageTransform;

enum SpecialProcess : std::int32_t {
    SP_TRANSFORM_RESIZE = 2,
    SP_TRANSFORM_ROTATE = 3,
    SP_AUTOCROP = 4,
    SP_FLIP = 5,
    SP_SHIFT = 6,
    SP_PERSPECTIVE = 7,
    SP_SKEW = 8,
    SP_TWIRL = 9,
    SP_REPRODUCE = 10,
    SP_AUTOCONTRAST = 11,
    SP_AUTOLEVEL = 12,
    SP_BALANCEHLS = 13,
    SP_BLUE = 14,
    SP_BRIGHTNESS = 15,
    SP_COLORIZE = 16,
    SP_CONTRAST = 17,
    SP_DESATURATE = 18,
    SP_EQUALIZE = 19,
    SP_GAMMA = 20,
    SP_GREEN = 21,
    SP_HUE = 22,
    SP_INTENSITY = 23,
    SP_INVERT = 24,
    SP_LIGHTNESS = 25,
    SP_POSTERIZE = 26,
    SP_RED = 27,
    SP_SATURATION = 28,
    SP_THRESHOLD = 29,
    SP_ADDNOISE = 31,
    SP_DIFFUSE = 32,
    SP_DILATION = 33,
    SP_EMBOSS = 34,
    SP_EROSION = 35,
    SP_GAUSSIANBLUR = 36,
    SP_HALFTONES = 37,
    SP_MOSAIC = 38,
    SP_MOTIONBLUR = 39,
    SP_RADIALBLUR = 40,
    SP_RELIEF = 41,
    SP_TEXTURIZE = 42,
    SP_TRACECONTOURS = 43,
    SP_ZOOMBLUR = 44,
    SP_FILTERHIGHPASS = 45,
    SP_FILTERLOWPASS = 46,
    SP_FILTERDIFFERENCE = 47,
    SP_FILTERLAPLAS = 48,
    SP_FILTERSOBEL = 49,
    SP_FILTERPREWITT = 50,
    SP_FILTERROBERTS = 51,
    SP_FILTERISOTROPIC = 52,
    SP_FILTERLINEDETECTION = 53,
    SP_FILTERBLUR = 54,
    SP_FILTERSHARPEN = 55,
    SP_FILTERRESERVED56 = 56,  ///< no list offers it; a job file or a command line may name it
    SP_FILTERMINIMAL = 58,
    SP_FILTERMAXIMAL = 59,
    SP_DEINTERLACE = 60,
    SP_LAUNCH = 100,
};

/// A field of a details string, by how it is written and read.
enum class FieldType : std::uint8_t {
    Long,
    Double,
    Boolean,           ///< written "True" and "False"
    CapitalBoolean,    ///< written "TRUE" and "FALSE"; missing or empty it is read as False
    Colour,            ///< a Long
    LongReadAsDouble,  ///< written rounded to a Long
};

/// The input of the parameter panel that shows a field.
enum class InputSlot : std::uint8_t { None, Text1, Text1b, Text1c, Text2, Check, List, Colour };

/// One parameter of a process, which is one field of its details.
struct SpecialProcessParameter {
    FieldType eType = FieldType::Long;
    InputSlot eSlot = InputSlot::None;
    std::int32_t lTab = 0;              ///< tab on which the input stands, from 1
    const char* sFirstStart = nullptr;  ///< the field's text on a first start; null if it is absent then
    /// The English text beside the input, or of the check box; null for a colour. The range that it names is
    /// for the user alone: nothing holds a value to it.
    const char* sLabel = nullptr;
    /// The panel shows the opposite of the stored Boolean, so that the choice turns over each time that it is
    /// shown.
    bool bShownInverted = false;
};

/// Up to so many items of a row of the catalogue.
template <typename Item, std::size_t kMost>
class UpTo
{
public:
    constexpr UpTo() = default;
    constexpr UpTo(std::initializer_list<Item> aItems)
    {
        for (const Item& objItem : aItems)
            m_aItems[m_nCount++] = objItem;
    }
    constexpr const Item* begin() const { return m_aItems; }
    constexpr const Item* end() const { return m_aItems + m_nCount; }
    constexpr std::size_t size() const { return m_nCount; }
    constexpr bool empty() const { return m_nCount == 0; }
    constexpr const Item& operator[](std::size_t i) const { return m_aItems[i]; }

private:
    Item m_aItems[kMost]{};
    std::size_t m_nCount = 0;
};

/// The value of a field: of a Long or a colour, of a Double (and of a Long that is read as one), of a
/// Boolean.
using DetailsValue = std::variant<std::int32_t, double, bool>;

/// Calls the process's operation on the picture that the library holds, with the values of its fields in
/// their order. The result is the operation's. Raises kErrOverflow "Overflow" for a value that its argument's
/// 8 or 16 bits can't hold, before anything is called. It is null for the launch.
using TransformCall = bool (*)(ImageTransform& ImageTransform1, std::span<const DetailsValue> aValues);

/// One special process.
struct SpecialProcessRow {
    std::int32_t lSpecialProcess;
    const char* sConstant;  ///< its name, part of the key under which the settings keep its details
    /// The English texts of the list and of the panel, misspellings included: they are keys of the
    /// translation. Null for the one process that the list doesn't offer.
    const char* sLabel;
    const char* sDescription;
    TransformCall fnCall = nullptr;
    UpTo<const char*, 3> aTabs = {};                    ///< English captions of the panel's tabs
    UpTo<SpecialProcessParameter, 5> aParameters = {};  ///< in the order of the details
    UpTo<const char*, 8> aChoices = {};  ///< English texts of its list; the value counts from 0
    bool bTwoDecimals = false;           ///< the panel shows its Doubles with two decimals
};

/// All of them in the order of the list: the launch first, though its number is the highest. The numbers 1,
/// 30, 57 and 61 to 99 are no processes.
std::span<const SpecialProcessRow> SpecialProcessCatalogue();

/// The row of a number; null for one that is no process.
const SpecialProcessRow* pSpecialProcess(std::int32_t lSpecialProcess);

/// Its own details fields on a first start, joined by "^" and without a closing one; "" where the settings
/// keep none.
std::string sFirstStartDetails(const SpecialProcessRow& objRow);

/// The key of section "frmMain" under which the settings keep the details last used.
std::string sDetailsKey(const SpecialProcessRow& objRow);
