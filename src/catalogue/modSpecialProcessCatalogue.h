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
    SP_FILTERRESERVED56 = 56,  ///< not offered in any list, but a job file or a command line may use it
    SP_FILTERMINIMAL = 58,
    SP_FILTERMAXIMAL = 59,
    SP_DEINTERLACE = 60,
    SP_LAUNCH = 100,
};

/// The type of a details field: how it is written and read.
enum class FieldType : std::uint8_t {
    Long,
    Double,
    Boolean,           ///< written "True" and "False"
    CapitalBoolean,    ///< written "TRUE" and "FALSE"; missing or empty reads as False
    Colour,            ///< a Long
    LongReadAsDouble,  ///< rounded to a Long when written
};

/// The input on the parameter panel that shows a field.
enum class InputSlot : std::uint8_t { None, Text1, Text1b, Text1c, Text2, Check, List, Colour };

/// One parameter of a process, stored in one field of its details.
struct SpecialProcessParameter {
    FieldType eType = FieldType::Long;
    InputSlot eSlot = InputSlot::None;
    std::int32_t lTab = 0;              ///< tab of the input, from 1
    const char* sFirstStart = nullptr;  ///< initial text of the field; null if the initial details omit it
    /// English label of the input or caption of the check box; null for a colour. The range it names is only
    /// a hint to the user: values aren't checked against it.
    const char* sLabel = nullptr;
    /// The panel shows the stored Boolean inverted, so the choice flips every time it is shown.
    bool bShownInverted = false;
};

/// A constexpr list of at most kMost items.
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

/// A field's value: int32 for Long and Colour, double for Double and LongReadAsDouble, bool for the Booleans.
using DetailsValue = std::variant<std::int32_t, double, bool>;

/// Applies the operation to the image held by ImageTransform1, with the field values in order, and returns
/// its result. Raises kErrOverflow "Overflow" before the call if a value doesn't fit its 8 or 16-bit
/// argument. Null for the launch.
using TransformCall = bool (*)(ImageTransform& ImageTransform1, std::span<const DetailsValue> aValues);

/// One special process.
struct SpecialProcessRow {
    std::int32_t lSpecialProcess;
    const char* sConstant;  ///< part of the settings key for its details
    /// English texts of the list and the panel. Misspellings are part of them: they are translation keys.
    /// Null for the one process that isn't listed.
    const char* sLabel;
    const char* sDescription;
    TransformCall fnCall = nullptr;
    UpTo<const char*, 3> aTabs = {};                    ///< English tab captions of the panel
    UpTo<SpecialProcessParameter, 5> aParameters = {};  ///< in the order of the details fields
    UpTo<const char*, 8> aChoices = {};  ///< English texts of its list; the field is the index, from 0
    bool bTwoDecimals = false;           ///< the panel shows Doubles with two decimals
};

/// All processes in list order: the launch comes first although its number is the highest. The numbers 1, 30,
/// 57 and 61 to 99 are unused.
std::span<const SpecialProcessRow> SpecialProcessCatalogue();

/// The row with that number, or null if there is none.
const SpecialProcessRow* pSpecialProcess(std::int32_t lSpecialProcess);

/// Initial values of the process's own fields, joined by "^" without a trailing one; "" if the settings store
/// no details for it.
std::string sFirstStartDetails(const SpecialProcessRow& objRow);

/// Settings key (section "frmMain") for the details last used.
std::string sDetailsKey(const SpecialProcessRow& objRow);
