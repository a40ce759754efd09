// The check of a task before it enters the table or runs, and the two ways to report what is wrong.
// Room: job.
//
// The check leaves a number in lErr; a reporter turns it into words. The one of the form may ask and mend,
// the one of the command line only records. lErr is written only when a check fails, so a code that stood
// there before survives a request that is found good.
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

/// Checks a request up to its first failure; only the notice of a type mismatch doesn't stop it. Makes
/// missing target folders, clears bDoSubfolders and bSaveInOriginalFolder of a plain source, and completes
/// the target of a conversion.
void ValidateRequest(Application& app, clsConversionOptions& objOptions);
void ValidateConversionRequest(Application& app, clsConversionOptions& objOptions);
void ValidateSpecializedRequest(Application& app, clsConversionOptions& objOptions);

/// Puts the words for lErr into sErr and reports them. A target folder that can't be made is left unsaid.
void ReportValidationErrorCommandLine(Application& app, clsConversionOptions& objOptions);

/// Tells the user what lErr means, asks where something can be done about it, and puts the focus where it is
/// wrong. True: go on with the request as it stands. False: give up, unless lErr is 0 now, as after a
/// mismatch that the user accepts.
bool bReportValidationErrorGUI(Application& app, clsConversionOptions& objOptions);
