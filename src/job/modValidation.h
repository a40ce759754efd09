// Validates tasks before they are added or run, and reports errors to the form or the command line.
// Room: job.
//
// Validation sets a code in lErr; a reporter turns it into a message. The form's reporter may ask the user
// and fix the request, the command line's only records. A valid request leaves lErr as it was, so an earlier
// code survives.
#pragma once

#include <cstdint>

#include "src/base/clsConversionOptions.h"

struct Application;

constexpr std::int32_t kErrOriginalFolder = -1;
constexpr std::int32_t kErrTargetNeedsWildcard = -2;
constexpr std::int32_t kErrTargetFolderOfPattern = -3;
constexpr std::int32_t kErrOriginalFile = -4;
constexpr std::int32_t kErrTargetWildcard = -5;
constexpr std::int32_t kErrTargetFolder = -6;
constexpr std::int32_t kErrTargetType = -7;
constexpr std::int32_t kErrJobFile = -8;
constexpr std::int32_t kErrEmptyFile = -9;
constexpr std::int32_t kErrEmptyDetails = -10;
constexpr std::int32_t kErrSpecialTargetWildcard = -11;
constexpr std::int32_t kErrSpecialOriginalWildcard = -12;
constexpr std::int32_t kErrTypeMismatchNotice = -13;
constexpr std::int32_t kErrProcessNumber = -101;
constexpr std::int32_t kErrProcessOriginal = -102;
constexpr std::int32_t kErrProcessTargetWildcard = -103;
constexpr std::int32_t kErrConcatenateWithItself = -104;
constexpr std::int32_t kErrTargetIsFolder = -105;
constexpr std::int32_t kErrNegativeWait = -106;
constexpr std::int32_t kErrNothingToReplace = -110;
constexpr std::int32_t kErrReplacementLetter = -111;
constexpr std::int32_t kErrTextOnly = -112;
constexpr std::int32_t kErrSize = -200;
constexpr std::int32_t kErrInterpolation = -201;
constexpr std::int32_t kErrTypesMissing = -202;

/// Validates a request and stops at the first failure, except for the type mismatch notice. Creates missing
/// target folders, clears bDoSubfolders and bSaveInOriginalFolder if the source isn't a wildcard, and
/// completes a conversion's target.
void ValidateRequest(Application& app, clsConversionOptions& objOptions);
void ValidateConversionRequest(Application& app, clsConversionOptions& objOptions);
void ValidateSpecializedRequest(Application& app, clsConversionOptions& objOptions);

/// Sets sErr to the message for lErr and reports it. A target folder that can't be created has no message.
void ReportValidationErrorCommandLine(Application& app, clsConversionOptions& objOptions);

/// Shows the message for lErr, offers a remedy where there is one, and focuses the offending field. True:
/// carry on with the request as it is. False: give up, unless lErr is now 0 (the user accepted a mismatch).
bool bReportValidationErrorGUI(Application& app, clsConversionOptions& objOptions);
