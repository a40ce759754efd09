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

struct OperationCall;

/// The processes that the program treats specially.
enum SpecialProcess : std::int32_t {
    SP_TRANSFORM_RESIZE = 2,
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

/// Makes the operation's call from the field values in order. Raises kErrOverflow "Overflow" if a value
/// doesn't fit its 8 or 16-bit argument. Null for the launch.
using TransformCall = OperationCall (*)(std::span<const DetailsValue> aValues);

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
