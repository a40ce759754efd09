// Converts details values to the arguments of an image library operation.
// Room: catalogue.
#pragma once

#include <limits>
#include <span>
#include <type_traits>

#include "src/base/raised_error.h"
#include "src/catalogue/modSpecialProcessCatalogue.h"
#include "src/platform/image_operations.h"

/// Converts a value to the argument type. A Long that doesn't fit an 8 or 16-bit argument raises kErrOverflow
/// "Overflow"; this is the program's only range check. A Long passed as a Boolean is True only if it is 1.
template <typename Argument>
Argument ArgumentFrom(const DetailsValue& objValue)
{
    if constexpr (std::is_same_v<Argument, bool>) {
        const std::int32_t* pChoice = std::get_if<std::int32_t>(&objValue);
        return pChoice ? *pChoice == 1 : std::get<bool>(objValue);
    } else if constexpr (sizeof(Argument) < sizeof(std::int32_t)) {
        const std::int32_t lValue = std::get<std::int32_t>(objValue);
        if (lValue < std::numeric_limits<Argument>::min() || lValue > std::numeric_limits<Argument>::max())
            throw clsRaisedError(kErrOverflow, "Overflow");
        return static_cast<Argument>(lValue);
    } else {
        return std::get<Argument>(objValue);
    }
}

template <std::size_t... kFields, typename... Arguments>
OperationCall objCallOf(const Operation<Arguments...>& objOperation,
                        [[maybe_unused]] std::span<const DetailsValue> aValues)
{
    return objOperation(ArgumentFrom<Arguments>(aValues[kFields])...);
}

/// A TransformCall for one operation; kFields are the positions, from 0, of the fields it takes as arguments.
template <const auto& kOperation, std::size_t... kFields>
OperationCall objCall(std::span<const DetailsValue> aValues)
{
    return objCallOf<kFields...>(kOperation, aValues);
}
