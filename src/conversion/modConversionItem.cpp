// Loads, transforms and saves one file, page by page if it is a TIFF.
#include "src/conversion/modConversionItem.h"

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "src/base/case_folding.h"
#include "src/base/clsConversionOptions.h"
#include "src/base/number_text.h"
#include "src/base/path_text.h"
#include "src/base/raised_error.h"
#include "src/base/text.h"
#include "src/commands/modRunState.h"
#include "src/conversion/modApplySpecialProcess.h"
#include "src/conversion/modConversionDetails.h"
#include "src/conversion/modPageRanges.h"
#include "src/forms/Application.h"
#include "src/job/modFileHelpers.h"
#include "src/platform/file_system.h"
#include "src/platform/image_library.h"
#include "src/platform/named_mutex.h"
#include "src/translator/modTranslator.h"

constexpr std::int32_t kTypeTiff = 3;
constexpr std::int32_t kErrNoTargetFolder = -100;
constexpr std::int32_t kErrNotLoaded = -101;
constexpr std::int32_t kErrInvalidTargetType = -102;
constexpr std::int32_t kErrNotConverted = -103;
constexpr std::int32_t kErrFrameNotLoaded = -110;

namespace
{

/// Whether to carry on with the item after a step.
enum class Step { GoOn, EndItem };

/// The item being converted.
struct Item {
    Application& app;
    ImageFile& ImageFile1;
    clsConversionOptions& objOptions;
    ConversionDetails objDetails;
    ImageBuffer aImage;
    std::vector<std::string> aTargets;  ///< files saved so far
    bool bOK = false;                   ///< the last save succeeded
    bool bProcessRaised = false;        ///< the special process raised an error, which ends the item
};

}  // namespace

static void Fail(Item& objItem, std::int32_t lErr, const std::string& sErr)
{
    objItem.objOptions.lErr = lErr;
    objItem.objOptions.sErr = sErr;
}

static void FailToLoad(Item& objItem)
{
    Fail(objItem, kErrNotLoaded,
         sTranslate(objItem.app, "Unsupported source image file format. Unable to load image."));
}

// For an item that may have begun a multi-page target, which is then discarded.
static Step FailToLoadAndDiscard(Item& objItem)
{
    FailToLoad(objItem);
    objItem.ImageFile1.SetMultiFrameSave(false);
    return Step::EndItem;
}

// A stopped run abandons its load, so a failure then says nothing about the file: leave the item.
static bool bLoaded(const Item& objItem, bool bOK)
{
    RaiseIfStopped(objItem.app);
    return bOK;
}

// Loads the source, which the special process is applied to next.
static bool bLoadSource(Item& objItem)
{
    const ReducedLoading objReduced(objItem.app, objItem.objOptions);
    return bLoaded(objItem, objItem.ImageFile1.LoadImage(objItem.objOptions.sOriginalFile, objItem.aImage));
}

static bool bIsTiff(std::int32_t lType)
{
    return lType == kTypeTiff;
}

// The only place that catches errors raised by a special process (overflow, failed operation): they fail this
// file, not the run.
static bool bApplyOrFail(Item& objItem)
{
    try {
        const bool bGoOn = bApplySpecialProcess(objItem.app, objItem.objOptions, objItem.aImage);
        RaiseIfStopped(objItem.app);
        return bGoOn;
    } catch (const clsRaisedError& objError) {
        objItem.bProcessRaised = true;
        Fail(objItem, kErrNotConverted,
             sTranslate(objItem.app, "Unable to convert") + ": " + objError.sDescription());
        return false;
    }
}

bool bSaveImageAsType(Application& app, clsConversionOptions& objOptions, std::int32_t lType,
                      const std::string& sFile, const ImageBuffer& aImage)
{
    using Save = bool (ImageFile::*)(const ImageBuffer&, const std::string&);
    static constexpr Save aSaves[] = {nullptr,
                                      &ImageFile::SaveJPEG,
                                      &ImageFile::SaveBMP,
                                      &ImageFile::SaveTIFF,
                                      &ImageFile::SaveGIF,
                                      &ImageFile::SaveEMF,
                                      &ImageFile::SaveJ2K,
                                      &ImageFile::SavePCX,
                                      &ImageFile::SavePNG,
                                      &ImageFile::SaveRAS,
                                      &ImageFile::SaveTGA,
                                      &ImageFile::SaveWMF};
    bool bOK = false;
    if (lType >= 1 && lType < static_cast<std::int32_t>(std::size(aSaves))) {
        bOK = (app.svc.ImageFile1.*aSaves[lType])(aImage, sFile);
    } else {
        objOptions.lErr = kErrInvalidTargetType;
        objOptions.sErr = sTranslate(app, "Invalid target file type");
    }
    // Intentionally overwrites the code just set: an unsupported type is reported as a failed save.
    objOptions.lErr = bOK ? 0 : kErrNotConverted;
    objOptions.sErr = bOK ? std::string() : sTranslate(app, "Unable to convert");
    return bOK;
}

// Saves, but keeps the item's first error.
static bool bSavePage(Item& objItem)
{
    clsConversionOptions& objOptions = objItem.objOptions;
    const std::int32_t lErrBefore = objOptions.lErr;
    const std::string sErrBefore = objOptions.sErr;
    const bool bOK = bSaveImageAsType(objItem.app, objOptions, objOptions.lTargetFileType,
                                      objOptions.sTargetFile, objItem.aImage);
    if (bOK)
        objItem.aTargets.push_back(objOptions.sTargetFile);
    if (lErrBefore != 0)
        Fail(objItem, lErrBefore, sErrBefore);
    return bOK;
}

// Loads a selected page of the source; keeps the item's first error.
static bool bLoadSelectedPage(Item& objItem, const std::string& sPage, std::size_t nPosition)
{
    const ReducedLoading objReduced(objItem.app, objItem.objOptions);
    if (bLoaded(objItem, objItem.ImageFile1.LoadFrame(objItem.objOptions.sOriginalFile, lToLong(sPage) - 1,
                                                      objItem.aImage)))
        return true;
    if (objItem.objOptions.lErr == 0)
        Fail(objItem, kErrFrameNotLoaded,
             sTranslate(objItem.app, "Unable to load frame") + " " + std::to_string(nPosition) + ". " +
                 sTranslate(objItem.app, "Check Options Button"));
    objItem.bOK = false;
    return false;
}

static std::string sAllPages(Item& objItem)
{
    const std::int32_t lCount = objItem.ImageFile1.GetFrameCount(objItem.objOptions.sOriginalFile);
    std::string sPages;
    for (std::int32_t l = 1; l <= lCount; ++l)
        sPages += (l == 1 ? "" : ",") + std::to_string(l);
    return sPages;
}

namespace
{

/// A multi-page target that is written anew: its old pages and those that are added to it. It takes the
/// target's place as a whole, or not at all if a page could not be saved.
class GrowingTarget
{
public:
    explicit GrowingTarget(Item& objItem)
        : m_objItem(objItem), m_objOld(objItem.app.svc.objFileSystem.objStampOf(sTarget()))
    {
        objItem.ImageFile1.SetMultiFrameSave(true);
    }

    /// Adds the item's picture.
    bool bAdd(bool bLast)
    {
        ImageFile& ImageFile1 = m_objItem.ImageFile1;
        bool bOK = bLast && m_bBegun ? bMayFinish() : true;
        if (m_bBegun) {
            bOK = bOK && ImageFile1.AppendFrame(m_objItem.aImage, bLast);
            m_bFinished = bLast;
        } else {
            bOK = ImageFile1.SaveTIFF(m_objItem.aImage, sTarget());
            m_bBegun = true;
        }
        m_bAllAdded = m_bAllAdded && bOK;
        return bOK;
    }

    /// Puts the target into place unless the last page did. False if it could not be, or lacks a page.
    bool bFinish()
    {
        if (!m_bFinished)
            m_bAllAdded =
                m_bBegun && m_bAllAdded && bMayFinish() && m_objItem.ImageFile1.AppendFrame({}, true);
        m_bFinished = true;
        if (m_bAllAdded)
            m_objItem.aTargets.push_back(sTarget());
        return m_bAllAdded;
    }

private:
    const std::string& sTarget() const { return m_objItem.objOptions.sTargetFile; }
    // Another program may have written to the target since its pages were read.
    bool bMayFinish() const { return m_objItem.app.svc.objFileSystem.objStampOf(sTarget()) == m_objOld; }

    Item& m_objItem;
    const std::optional<FileStamp> m_objOld;
    bool m_bBegun = false;
    bool m_bAllAdded = true;
    bool m_bFinished = false;
};

}  // namespace

// Appends the source to an existing TIFF: writes the old pages and then the new one. The special process is
// applied to the old pages as well.
static Step AppendSourceToTiff(Item& objItem)
{
    ImageFile& ImageFile1 = objItem.ImageFile1;
    clsConversionOptions& objOptions = objItem.objOptions;
    GrowingTarget objTarget(objItem);
    const std::int32_t lCount = ImageFile1.GetFrameCount(objOptions.sTargetFile);
    for (std::int32_t l = 1; l <= lCount; ++l) {
        if (!bLoaded(objItem, ImageFile1.LoadFrame(objOptions.sTargetFile, l - 1, objItem.aImage)))
            return FailToLoadAndDiscard(objItem);
        if (bApplyOrFail(objItem))
            objTarget.bAdd(false);
        if (objItem.bProcessRaised)
            return Step::EndItem;
    }
    if (!bLoadSource(objItem))
        return FailToLoadAndDiscard(objItem);
    // A target without a page that can be read isn't replaced.
    objItem.bOK = bApplyOrFail(objItem) && lCount > 0 && objTarget.bAdd(true);
    if (objItem.bProcessRaised)
        return Step::EndItem;
    objItem.bOK = objItem.bOK && objTarget.bFinish();
    return Step::GoOn;
}

// Converts any other source to TIFF.
static Step ConvertIntoTiff(Item& objItem)
{
    clsConversionOptions& objOptions = objItem.objOptions;
    if (objItem.objDetails.bAppendToTiff && bFileExists(objItem.app, objOptions.sTargetFile))
        return AppendSourceToTiff(objItem);
    objItem.ImageFile1.SetMultiFrameSave(false);
    if (!bLoadSource(objItem)) {
        FailToLoad(objItem);
        return Step::EndItem;
    }
    objItem.bOK =
        bApplyOrFail(objItem) && objItem.ImageFile1.SaveTIFF(objItem.aImage, objOptions.sTargetFile);
    if (objItem.bOK)
        objItem.aTargets.push_back(objOptions.sTargetFile);
    return objItem.bProcessRaised ? Step::EndItem : Step::GoOn;
}

// Saves each selected page of a TIFF to its own file.
static Step SplitTiff(Item& objItem)
{
    clsConversionOptions& objOptions = objItem.objOptions;
    std::string& sPagesToDo = objItem.objDetails.sPagesToDo;
    objItem.ImageFile1.SetMultiFrameSave(false);
    if (bContains(sPagesToDo, "*") || sTrim(sPagesToDo).empty())
        sPagesToDo = sAllPages(objItem);
    else
        lParseRangeString(sPagesToDo);
    const std::vector<std::string> aPages = aSplit(sPagesToDo, ',');
    const bool bPageNaming = aPages.size() > 1;
    const std::string sStem =
        sFolderOfPath(objOptions.sTargetFile) + sGetBaseName(objOptions.sTargetFile) + "-";
    const std::string sExtension = sGetExtensionName(objOptions.sTargetFile);
    for (std::size_t i = 0; i < aPages.size(); ++i) {
        if (bPageNaming)
            objOptions.sTargetFile = sStem + aPages[i] + (sExtension.empty() ? "" : "." + sExtension);
        if (bLoadSelectedPage(objItem, aPages[i], i))
            objItem.bOK = bApplyOrFail(objItem) && bSavePage(objItem);
        if (objItem.bProcessRaised)
            return Step::EndItem;
    }
    return Step::GoOn;
}

// Writes the target's old pages anew.
static bool bCarryOverPages(Item& objItem, GrowingTarget& objTarget)
{
    const std::string& sTarget = objItem.objOptions.sTargetFile;
    const std::int32_t lCount = objItem.ImageFile1.GetFrameCount(sTarget);
    for (std::int32_t l = 1; l <= lCount; ++l) {
        if (!bLoaded(objItem, objItem.ImageFile1.LoadFrame(sTarget, l - 1, objItem.aImage)))
            return false;
        objTarget.bAdd(false);
    }
    return lCount > 0;
}

// Saves the only selected page as a single-page file.
static Step SaveOnlyPage(Item& objItem, const std::vector<std::string>& aPages)
{
    objItem.ImageFile1.SetMultiFrameSave(false);
    for (std::size_t i = 0; i < aPages.size(); ++i) {
        if (!bLoadSelectedPage(objItem, aPages[i], i))
            continue;
        objItem.bOK = bApplyOrFail(objItem) &&
                      objItem.ImageFile1.SaveTIFF(objItem.aImage, objItem.objOptions.sTargetFile);
        if (objItem.bProcessRaised)
            return Step::EndItem;
        if (objItem.bOK)
            objItem.aTargets.push_back(objItem.objOptions.sTargetFile);
    }
    return Step::GoOn;
}

// Appends selected pages of a TIFF to another. Unlike AppendSourceToTiff, this doesn't apply the special
// process to existing pages, and an empty selection selects no page.
static Step AppendPagesToTiff(Item& objItem)
{
    clsConversionOptions& objOptions = objItem.objOptions;
    std::string& sPagesToDo = objItem.objDetails.sPagesToDo;
    if (bContains(sPagesToDo, "*"))
        sPagesToDo = sAllPages(objItem);
    else
        lParseRangeString(sPagesToDo);
    const std::vector<std::string> aPages = aSplit(sPagesToDo, ',');
    const bool bTargetExists = bFileExists(objItem.app, objOptions.sTargetFile);
    if (!bTargetExists &&
        (objItem.ImageFile1.GetFrameCount(objOptions.sOriginalFile) <= 1 || aPages.size() == 1))
        return SaveOnlyPage(objItem, aPages);
    GrowingTarget objTarget(objItem);
    if (bTargetExists && !bCarryOverPages(objItem, objTarget))
        return FailToLoadAndDiscard(objItem);
    bool bAdded = false;
    for (std::size_t i = 0; i < aPages.size(); ++i) {
        if (!bLoadSelectedPage(objItem, aPages[i], i))
            continue;
        objItem.bOK = bApplyOrFail(objItem) && objTarget.bAdd(i + 1 == aPages.size());
        if (objItem.bProcessRaised)
            return Step::EndItem;
        bAdded = true;
    }
    if (bAdded)
        objItem.bOK = objTarget.bFinish();
    return Step::GoOn;
}

static Step ConvertOnce(Item& objItem)
{
    const clsConversionOptions& objOptions = objItem.objOptions;
    if (!bIsTiff(objOptions.lOriginalFileType))
        return ConvertIntoTiff(objItem);
    if (bIsTiff(objOptions.lTargetFileType) && objItem.objDetails.bAppendToTiff)
        return AppendPagesToTiff(objItem);
    return SplitTiff(objItem);
}

static bool bAppends(const Item& objItem)
{
    return bIsTiff(objItem.objOptions.lTargetFileType) && objItem.objDetails.bAppendToTiff;
}

// Converts an item whose source or target is a TIFF. A failed first pass is repeated in the state it left
// behind: the first error stays even if every page is then saved, and split pages are split again under their
// new names. What was appended isn't appended again.
static void ConvertWithPages(Item& objItem, std::int32_t& lResult)
try {
    for (bool bRetried = false;; bRetried = true) {
        if (ConvertOnce(objItem) == Step::EndItem)
            return;
        objItem.ImageFile1.SetMultiFrameSave(false);
        if (objItem.objOptions.lErr == 0 && !objItem.bOK)
            Fail(objItem, kErrNotConverted, sTranslate(objItem.app, "Unable to convert"));
        lResult = objItem.objOptions.lErr;
        if (lResult == 0 || bRetried || !objItem.app.frmMain.bTryAutodetectIfFailed ||
            (bAppends(objItem) && !objItem.aTargets.empty()))
            return;
    }
} catch (...) {
    objItem.ImageFile1.SetMultiFrameSave(false);  // lets go of the file that was being written
    throw;
}

namespace
{

/// Keeps other processes from appending to the same target. One lock for all targets would do, but then every
/// append would wait for every other.
class TargetLock
{
public:
    TargetLock(Application& app, const std::string& sTarget) : m_app(app), m_sName(sNameFor(app, sTarget))
    {
        app.svc.objNamedMutex.Acquire(m_sName);
    }
    ~TargetLock() { m_app.svc.objNamedMutex.Release(m_sName); }
    TargetLock(const TargetLock&) = delete;
    TargetLock& operator=(const TargetLock&) = delete;

private:
    static std::string sNameFor(Application& app, const std::string& sTarget)
    {
        constexpr std::size_t kLocks = 64;
        const std::string sFolder = app.svc.objFileSystem.sRealPath(sGetParentFolderName(sTarget));
        const std::string sPath = sFoldCase(sFolder + "/" + sTarget.substr(sFolderOfPath(sTarget).size()));
        return "Append_" + std::to_string(std::hash<std::string>{}(sPath) % kLocks);
    }

    Application& m_app;
    const std::string m_sName;
};

}  // namespace

static void ConvertPlain(Item& objItem, std::int32_t& lResult)
{
    if (!bLoadSource(objItem)) {
        FailToLoad(objItem);
        return;
    }
    if (bApplyOrFail(objItem))
        bSavePage(objItem);
    lResult = objItem.objOptions.lErr;
}

std::int32_t PerformConversionItemNCTOCX(Application& app, clsConversionOptions& objOptions,
                                         ItemFiles* pFiles)
{
    Item objItem{app, app.svc.ImageFile1, objOptions, {}, {}, {}};
    // Before anything is read: whatever happens to the source from now on shows.
    if (pFiles)
        pFiles->objOriginal = app.svc.objFileSystem.objStampOf(objOptions.sOriginalFile);
    std::int32_t lResult = 0;
    Fail(objItem, 0, "");
    const std::string sFolder = sGetParentFolderName(objOptions.sTargetFile);
    bool bThere = sFolder.empty() || bFolderExists(app, sFolder);  // "": the working folder
    if (!bThere) {
        CreateFolderPath(app, sFolder);
        bThere = bFolderExists(app, sFolder);
    }
    if (!bThere) {
        // Carry on regardless: the saves will fail, but this error stays.
        Fail(objItem, kErrNoTargetFolder, sTranslate(app, "Target folder does not exist"));
        lResult = kErrNoTargetFolder;
    }

    objItem.objDetails = SplitImageConversionOptions(app, objOptions.sExtraParams);
    objItem.ImageFile1.SetInfo(objItem.objDetails.objTexts);
    objItem.ImageFile1.SetTIFFCompression(app.frmMain.lTIFFCompression);
    objItem.ImageFile1.SetJPEGQuality(app.frmMain.lJPEGQuality);
    if (bAppends(objItem)) {
        const TargetLock objLock(app, objOptions.sTargetFile);
        ConvertWithPages(objItem, lResult);
    } else if (bIsTiff(objOptions.lOriginalFileType) || bIsTiff(objOptions.lTargetFileType)) {
        ConvertWithPages(objItem, lResult);
    } else {
        ConvertPlain(objItem, lResult);
    }
    if (objItem.bProcessRaised) {
        objItem.ImageFile1.SetMultiFrameSave(false);
        lResult = objOptions.lErr;
    }
    if (pFiles)
        pFiles->aTargets = std::move(objItem.aTargets);
    return lResult;
}

std::int32_t lPerformConversionItem(Application& app, clsConversionOptions& objOptions, OriginalRule eRule)
{
    ItemFiles objFiles;
    const std::int32_t lResult =
        objOptions.lConversionMethod == 1 ? PerformConversionItemNCTOCX(app, objOptions, &objFiles) : 0;
    if (!app.frmMain.bDeleteOriginalFileAfterProcessing || lResult != 0)
        return lResult;
    return bDisposeOfOriginal(app, objOptions, objFiles, eRule) ? lResult : objOptions.lErr;
}
