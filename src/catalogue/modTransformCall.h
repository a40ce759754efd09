// From the values of a details string to the arguments of an operation of the image library.
// Room: catalogue.
#pragma once

#include <limits>
#include <span>
#include <type_traits>

#include "src/base/raised_error.h"
#include "src/catalogue/modSpecialProcessCatalogue.h"
#include "src/platform/image_transform.h"

/// The value as an argument of that type. A Long becomes an argument of 8 or 16 bits only if they can hold
/// it, else kErrOverflow "Overflow" is raised: nothing else in the program holds a value to its range. Of a
/// Long that stands for a choice of two, 1 alone is True.
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
bool bInvoke(bool (ImageTransform::*fnOperation)(Arguments...), ImageTransform& ImageTransform1,
             [[maybe_unused]] std::span<const DetailsValue> aValues)
{
    return (ImageTransform1.*fnOperation)(ArgumentFrom<Arguments>(aValues[kFields])...);
}

/// A TransformCall of one operation: its arguments, in their order, are the fields of these positions, from
/// 0.
template <auto fnOperation, std::size_t... kFields>
bool bCall(ImageTransform& ImageTransform1, std::span<const DetailsValue> aValues)
{
    return bInvoke<kFields...>(fnOperation, ImageTransform1, aValues);
}
