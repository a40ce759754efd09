// The table of file types, and lookups in it.
#include "src/job/modFileTypes.h"

#include <array>
#include <string_view>

#include "src/base/case_folding.h"
#include "src/base/number_text.h"
#include "src/base/text.h"
#include "src/forms/Application.h"
#include "src/forms/scope_guards.h"
#include "src/translator/modTranslator.h"

namespace
{

struct FileType {
    std::int32_t lType;
    const char* sName;
    const char* sLabelTail;
    const char* sExtension;
    const char* sSecondExtension;
    bool bTarget;  ///< available as conversion target
    bool bSpecial;
    const char* sFilter;
};

// The oddities are intentional (no dot in the pattern "*emf" and the label "*jpe", commas and no space in the
// TIFF label): users know the list as it is.
constexpr const char* kAllPictureTypes =
    "All Picture Types|*.bmp;*.dib;*.emf;*.gif;*.png;*.ico;*.jpg;*.jpe;*.jpeg;*.tif;*.tiff;*.cpt;*.wmf;*.ani;"
    "*.cur;*.jp2;*.jpc;*.j2k;*.tga;*.pcx;*.ras|"
    "Bitmaps (*.bmp;*.dib)|*.bmp;*.dib|"
    "GIF Images (*.gif)|*.gif|"
    "PNG Images (*.png)|*.png|"
    "JPEG Images (*.jpg;*jpe;*.jpeg)|*.jpg;*.jpe;*.jpeg|"
    "JPEG 2000 Images (*.jp2;*.jpc;*.j2k)|*.jp2;*.jpc;*.j2k|"
    "TGA Images (*.tga)|*.tga|"
    "PCX Images (*.pcx)|*.pcx|"
    "RAS Images (*.ras)|*.ras|"
    "TIFF Images(*.tif,*.tiff,*.cpt)|*.tif;*.tiff;*.cpt|"
    "Metafiles (*.wmf;*emf)|*.wmf;*emf|"
    "Icons (*.ico)|*.ico|"
    "Cursors (*.ani;*.cur)|*.ani;*.cur|"
    "All Files (*.*)|*.*|";

// Only JPEG's label is in capitals; this is intentional.
constexpr std::array<FileType, 15> kFileTypes{{
    {-1, "Autodetect from file name", "", "*", "", false, false, kAllPictureTypes},
    {1, "JPEG", " (*.JPG)", "jpg", "jpeg", true, true, "JPEG (*.jpg)|*.jpg|All files (*.*)|*.*"},
    {2, "Windows Bitmap", " (*.bmp)", "bmp", "", true, true,
     "Windows Bitmap (*.bmp)|*.bmp|All files (*.*)|*.*"},
    {3, "Tagged Image File Format", " (*.tif)", "tif", "tiff", true, true,
     "Tagged Image File Format (*.tif, *.tiff)|*.tif;*.tiff|All files (*.*)|*.*"},
    {4, "GIF", " (*.gif)", "gif", "", true, true, "Graphic Image Format (*.gif)|*.gif|All files (*.*)|*.*"},
    {5, "EMF", " (*.emf)", "emf", "", true, true, "EMF (*.emf)|*.emf|All files (*.*)|*.*"},
    {6, "J2K", " (*.j2k)", "j2k", "", true, true, "J2K (*.j2k)|*.j2k|All files (*.*)|*.*"},
    {7, "PCX bitmap format", " (*.pcx)", "pcx", "", true, true,
     "PCX Bitmap (*.pcx)|*.pcx|All files (*.*)|*.*"},
    {8, "Portable Network Graphics", " (*.png)", "png", "", true, true,
     "Portable Network Graphics (*.png)|*.png|All files (*.*)|*.*"},
    {9, "Sun Rasterfile", " (*.ras)", "ras", "", true, true,
     "Sun Rasterfile (*.ras)|*.ras|All files (*.*)|*.*"},
    {10, "Targa File", " (*.tga)", "tga", "", true, true, "Targa File (*.tga)|*.tga|All files (*.*)|*.*"},
    {11, "Windows Meta File", " (*.wmf)", "wmf", "", true, true,
     "Windows Meta File (*.wmf)|*.wmf|All files (*.*)|*.*"},
    {12, "Windows Icon", " (*.ico)", "ico", "", false, true, "Icon (*.ico)|*.ico|All files (*.*)|*.*"},
    {13, "Windows Cursor", " (*.cur)", "cur", "", false, true, "Cursor (*.cur)|*.cur|All files (*.*)|*.*"},
    {14, "Windows Animated Cursor", " (*.ani)", "ani", "", false, true,
     "Ani (*.ani)|*.ani|All files (*.*)|*.*"},
}};

const FileType* pFileType(std::int32_t lType)
{
    for (const FileType& objType : kFileTypes)
        if (objType.lType == lType)
            return &objType;
    return nullptr;
}

}  // namespace

std::string sFileTypeExtension(std::int32_t lType, bool bWithStar)
{
    const FileType* pType = pFileType(lType);
    return std::string(bWithStar ? "*." : "") + (pType ? pType->sExtension : "");
}

std::int32_t lFileTypeFromExtension(const std::string& sExtension)
{
    const std::string sKey = sFoldCase(sExtension);
    if (sKey.empty())
        return kNoFileType;
    for (const FileType& objType : kFileTypes)
        if (sKey == objType.sExtension || sKey == objType.sSecondExtension)
            return objType.lType;
    return kNoFileType;
}

std::string sFileFilterForType(std::int32_t lType)
{
    const FileType* pType = pFileType(lType);
    return pType ? pType->sFilter : "";
}

static std::string sEntryText(Application& app, const FileType& objType)
{
    return "[" + std::to_string(objType.lType) + "] " + sTranslate(app, objType.sName) + objType.sLabelTail;
}

// A combo box that has entries was filled by an earlier call; leave it and its selection alone.
static void FillIn(Application& app, ComboBox& cb, std::map<std::string, std::int32_t>* pExtensions,
                   bool (*fnOffers)(const FileType&))
{
    if (cb.ListCount() > 0)
        return;
    const InternalChange objChange(app);
    const RedrawLock objLock(cb);
    cb.Clear();
    for (const FileType& objType : kFileTypes) {
        if (!fnOffers(objType))
            continue;
        cb.AddItem(sEntryText(app, objType), objType.lType);
        if (!pExtensions || objType.lType == kTypeAutodetect)
            continue;
        for (const std::string sKey : {objType.sExtension, objType.sSecondExtension})
            if (!sKey.empty())
                (*pExtensions)[sKey] = cb.ListCount() - 1;
    }
    cb.SetListIndex(0);
}

void FillInFileTypeComboBoxOriginal(Application& app)
{
    FillIn(app, app.frmMain.cbFileTypeOriginal, &app.frmMain.colExtensionsOriginal,
           [](const FileType&) { return true; });
}

void FillInFileTypeComboBoxTarget(Application& app)
{
    FillIn(app, app.frmMain.cbFileTypeTarget, &app.frmMain.colExtensionsTarget,
           [](const FileType& objType) { return objType.bTarget; });
}

void FillInFileTypeComboBoxSpecialProcess(Application& app)
{
    FillIn(app, app.frmMain.cbFileTypeOriginalSpecialized, &app.frmMain.colExtensionsSpecialized,
           [](const FileType& objType) { return objType.bSpecial; });
}

std::int32_t lSelectedFileType(const ComboBox& cb)
{
    return cb.ListIndex() < 0 ? kNoFileType : cb.ItemData(cb.ListIndex());
}

bool bSelectFileType(ComboBox& cb, std::int32_t lType)
{
    for (std::int32_t lIndex = 0; lIndex < cb.ListCount(); ++lIndex) {
        if (cb.ItemData(lIndex) == lType) {
            cb.SetListIndex(lIndex);
            return true;
        }
    }
    return false;
}

bool bSelectExtension(ComboBox& cb, const std::map<std::string, std::int32_t>& colExtensions,
                      const std::string& sExtension)
{
    const auto itFound = colExtensions.find(sFoldCase(sExtension));
    if (itFound == colExtensions.end())
        return false;
    cb.SetListIndex(itFound->second);
    return true;
}

std::int32_t lFileTypeInEntryText(const std::string& sText)
{
    const std::size_t nEnd = sText.find(']');
    if (!sText.starts_with("[") || nEnd == std::string::npos)
        return kNoFileType;
    const std::string sDigits = sText.substr(1, nEnd - 1);
    return bIsNumeric(sDigits) ? lLeadingNumber(sDigits) : kNoFileType;
}
