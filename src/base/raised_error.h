// The error that ends a run: a number and a description.
// Room: base.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

constexpr std::int32_t kErrInvalidProcedureCall = 5;
constexpr std::int32_t kErrOverflow = 6;
constexpr std::int32_t kErrOutOfMemory = 7;
constexpr std::int32_t kErrSubscript = 9;
constexpr std::int32_t kErrTypeMismatch = 13;
constexpr std::int32_t kErrBadFileName = 52;
constexpr std::int32_t kErrFileNotFound = 53;
constexpr std::int32_t kErrPathFileAccess = 75;

/// Thrown only by failures that must end the run; all others are recorded in lErr and sErr.
class clsRaisedError : public std::runtime_error
{
public:
    clsRaisedError(std::int32_t lNumber, const std::string& sDescription)
        : std::runtime_error(sDescription), m_lNumber(lNumber)
    {
    }

    std::int32_t lNumber() const { return m_lNumber; }
    std::string sDescription() const { return what(); }

private:
    std::int32_t m_lNumber;
};
