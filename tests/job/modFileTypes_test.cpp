// File types: extensions, dialog filters and combo boxes.
#include "src/job/modFileTypes.h"

#include <gtest/gtest.h>

#include <array>

#include "tests/fakes/test_application.h"

TEST(FileTypeExtension, ReturnsTheExtensionOfEachTypeWithoutADot)
{
    const std::array<const char*, 16> aExpected{"*",   "",    "jpg", "bmp", "tif", "gif", "emf", "j2k",
                                                "pcx", "png", "ras", "tga", "wmf", "ico", "cur", "ani"};
    for (std::int32_t lType = -1; lType <= 14; ++lType)
        EXPECT_EQ(sFileTypeExtension(lType, false), aExpected[static_cast<std::size_t>(lType + 1)]) << lType;
}

TEST(FileTypeExtension, PrependsStarDotOnRequestEvenToNothing)
{
    EXPECT_EQ(sFileTypeExtension(1, true), "*.jpg");
    EXPECT_EQ(sFileTypeExtension(-1, true), "*.*");
    EXPECT_EQ(sFileTypeExtension(0, true), "*.");
    EXPECT_EQ(sFileTypeExtension(15, true), "*.");
    EXPECT_EQ(sFileTypeExtension(kNoFileType, false), "");
}

TEST(FileTypeFromExtension, AcceptsBothSpellingsInAnyCase)
{
    EXPECT_EQ(lFileTypeFromExtension("JPG"), 1);
    EXPECT_EQ(lFileTypeFromExtension("jpeg"), 1);
    EXPECT_EQ(lFileTypeFromExtension("Tiff"), 3);
    EXPECT_EQ(lFileTypeFromExtension("*"), -1);
    for (std::int32_t lType = 1; lType <= 14; ++lType)
        EXPECT_EQ(lFileTypeFromExtension(sFileTypeExtension(lType, false)), lType);
}

TEST(FileTypeFromExtension, ReturnsNoTypeForUnknownExtensions)
{
    for (const char* sExtension : {"jpe", "", ".jpg", "jpg ", "jp2", "dib"})
        EXPECT_EQ(lFileTypeFromExtension(sExtension), -12345678) << sExtension;
}

TEST(FileFilterForType, ReturnsTheFilterOfEachType)
{
    EXPECT_EQ(sFileFilterForType(1), "JPEG (*.jpg)|*.jpg|All files (*.*)|*.*");
    EXPECT_EQ(sFileFilterForType(2), "Windows Bitmap (*.bmp)|*.bmp|All files (*.*)|*.*");
    EXPECT_EQ(sFileFilterForType(3),
              "Tagged Image File Format (*.tif, *.tiff)|*.tif;*.tiff|All files (*.*)|*.*");
    EXPECT_EQ(sFileFilterForType(4), "Graphic Image Format (*.gif)|*.gif|All files (*.*)|*.*");
    EXPECT_EQ(sFileFilterForType(5), "EMF (*.emf)|*.emf|All files (*.*)|*.*");
    EXPECT_EQ(sFileFilterForType(6), "J2K (*.j2k)|*.j2k|All files (*.*)|*.*");
    EXPECT_EQ(sFileFilterForType(7), "PCX Bitmap (*.pcx)|*.pcx|All files (*.*)|*.*");
    EXPECT_EQ(sFileFilterForType(8), "Portable Network Graphics (*.png)|*.png|All files (*.*)|*.*");
    EXPECT_EQ(sFileFilterForType(9), "Sun Rasterfile (*.ras)|*.ras|All files (*.*)|*.*");
    EXPECT_EQ(sFileFilterForType(10), "Targa File (*.tga)|*.tga|All files (*.*)|*.*");
    EXPECT_EQ(sFileFilterForType(11), "Windows Meta File (*.wmf)|*.wmf|All files (*.*)|*.*");
    EXPECT_EQ(sFileFilterForType(12), "Icon (*.ico)|*.ico|All files (*.*)|*.*");
    EXPECT_EQ(sFileFilterForType(13), "Cursor (*.cur)|*.cur|All files (*.*)|*.*");
    EXPECT_EQ(sFileFilterForType(14), "Ani (*.ani)|*.ani|All files (*.*)|*.*");
}

TEST(FileFilterForType, IsEmptyForUnknownTypes)
{
    EXPECT_EQ(sFileFilterForType(0), "");
    EXPECT_EQ(sFileFilterForType(15), "");
    EXPECT_EQ(sFileFilterForType(kNoFileType), "");
}

TEST(FileFilterForType, KeepsTheOdditiesOfTheAutodetectFilter)
{
    EXPECT_EQ(sFileFilterForType(-1),
              "All Picture "
              "Types|*.bmp;*.dib;*.emf;*.gif;*.png;*.ico;*.jpg;*.jpe;*.jpeg;*.tif;*.tiff;*.cpt;*.wmf;*.ani;*."
              "cur;*.jp2;*.jpc;*.j2k;*.tga;*.pcx;*.ras|Bitmaps (*.bmp;*.dib)|*.bmp;*.dib|GIF Images "
              "(*.gif)|*.gif|PNG Images (*.png)|*.png|JPEG Images "
              "(*.jpg;*jpe;*.jpeg)|*.jpg;*.jpe;*.jpeg|JPEG 2000 Images "
              "(*.jp2;*.jpc;*.j2k)|*.jp2;*.jpc;*.j2k|TGA Images (*.tga)|*.tga|PCX Images "
              "(*.pcx)|*.pcx|RAS Images (*.ras)|*.ras|TIFF "
              "Images(*.tif,*.tiff,*.cpt)|*.tif;*.tiff;*.cpt|Metafiles (*.wmf;*emf)|*.wmf;*emf|Icons "
              "(*.ico)|*.ico|Cursors (*.ani;*.cur)|*.ani;*.cur|All Files (*.*)|*.*|");
}

static std::vector<std::string> aEntries(const ComboBox& cb)
{
    std::vector<std::string> aTexts;
    for (std::int32_t l = 0; l < cb.ListCount(); ++l)
        aTexts.push_back(cb.List(l));
    return aTexts;
}

TEST(FillInFileTypeComboBoxOriginal, ListsEveryTypeAndAutodetect)
{
    TestApplication app;

    FillInFileTypeComboBoxOriginal(app);

    const std::vector<std::string> aExpected{
        "[-1] Autodetect from file name",
        "[1] JPEG (*.JPG)",
        "[2] Windows Bitmap (*.bmp)",
        "[3] Tagged Image File Format (*.tif)",
        "[4] GIF (*.gif)",
        "[5] EMF (*.emf)",
        "[6] J2K (*.j2k)",
        "[7] PCX bitmap format (*.pcx)",
        "[8] Portable Network Graphics (*.png)",
        "[9] Sun Rasterfile (*.ras)",
        "[10] Targa File (*.tga)",
        "[11] Windows Meta File (*.wmf)",
        "[12] Windows Icon (*.ico)",
        "[13] Windows Cursor (*.cur)",
        "[14] Windows Animated Cursor (*.ani)",
    };
    EXPECT_EQ(aEntries(app.frmMain.cbFileTypeOriginal), aExpected);
    FillInFileTypeComboBoxSpecialProcess(app);
    EXPECT_EQ(aEntries(app.frmMain.cbFileTypeOriginalSpecialized),
              std::vector<std::string>(aExpected.begin() + 1, aExpected.end()));
    EXPECT_EQ(app.frmMain.cbFileTypeOriginal.ListIndex(), 0);
    EXPECT_EQ(app.frmMain.cbFileTypeOriginal.ItemData(0), -1);
    EXPECT_EQ(app.frmMain.cbFileTypeOriginal.ItemData(14), 14);
}

TEST(FillInFileTypeComboBoxTarget, ListsWritableTypes)
{
    TestApplication app;

    FillInFileTypeComboBoxTarget(app);

    EXPECT_EQ(app.frmMain.cbFileTypeTarget.ListCount(), 11);
    EXPECT_EQ(app.frmMain.cbFileTypeTarget.ItemData(0), 1);
    EXPECT_EQ(app.frmMain.cbFileTypeTarget.ItemData(10), 11);
}

TEST(FillInFileTypeComboBoxSpecialProcess, ListsReadableTypesWithoutAutodetect)
{
    TestApplication app;

    FillInFileTypeComboBoxSpecialProcess(app);

    EXPECT_EQ(app.frmMain.cbFileTypeOriginalSpecialized.ListCount(), 14);
    EXPECT_EQ(app.frmMain.cbFileTypeOriginalSpecialized.ListIndex(), 0);
    EXPECT_EQ(app.frmMain.cbFileTypeOriginalSpecialized.ItemData(0), 1);
    EXPECT_EQ(app.frmMain.cbFileTypeOriginalSpecialized.ItemData(13), 14);
}

TEST(FillInFileTypeComboBox, IsFilledOnlyOnce)
{
    TestApplication app;
    FillInFileTypeComboBoxTarget(app);
    app.frmMain.cbFileTypeTarget.SetListIndex(4);

    FillInFileTypeComboBoxTarget(app);

    EXPECT_EQ(app.frmMain.cbFileTypeTarget.ListCount(), 11);
    EXPECT_EQ(app.frmMain.cbFileTypeTarget.ListIndex(), 4);
}

TEST(FillInFileTypeComboBox, SuppressesChangeHandlers)
{
    TestApplication app;
    bool bInternal = false;
    app.frmMain.cbFileTypeTarget.OnClick = [&] { bInternal = app.bInternalGridChange; };

    FillInFileTypeComboBoxTarget(app);
    EXPECT_TRUE(bInternal);
    EXPECT_FALSE(app.bInternalGridChange);

    app.bInternalGridChange = true;
    FillInFileTypeComboBoxOriginal(app);
    EXPECT_TRUE(app.bInternalGridChange);
}

TEST(FillInFileTypeComboBox, TranslatesOnlyTheName)
{
    TestApplication app;
    app.objTranslator.dictTranslations["JPEG"] = "Foto";

    FillInFileTypeComboBoxTarget(app);

    EXPECT_EQ(app.frmMain.cbFileTypeTarget.List(0), "[1] Foto (*.JPG)");
}

TEST(SelectExtension, AcceptsBothSpellingsInAnyCase)
{
    TestApplication app;
    FillInFileTypeComboBoxOriginal(app);
    frmMain& frm = app.frmMain;

    EXPECT_TRUE(bSelectExtension(frm.cbFileTypeOriginal, frm.colExtensionsOriginal, "JPG"));
    EXPECT_EQ(lSelectedFileType(frm.cbFileTypeOriginal), 1);
    EXPECT_TRUE(bSelectExtension(frm.cbFileTypeOriginal, frm.colExtensionsOriginal, "tiff"));
    EXPECT_EQ(lSelectedFileType(frm.cbFileTypeOriginal), 3);
}

TEST(SelectExtension, KeepsTheSelectionForUnknownExtensions)
{
    TestApplication app;
    FillInFileTypeComboBoxTarget(app);
    frmMain& frm = app.frmMain;
    frm.cbFileTypeTarget.SetListIndex(2);

    for (const char* sExtension : {"ico", "*", "", "xyz"})
        EXPECT_FALSE(bSelectExtension(frm.cbFileTypeTarget, frm.colExtensionsTarget, sExtension));

    EXPECT_EQ(frm.cbFileTypeTarget.ListIndex(), 2);
}

TEST(SelectFileType, FindsTheEntryByItsItemData)
{
    TestApplication app;
    FillInFileTypeComboBoxOriginal(app);
    ComboBox& cb = app.frmMain.cbFileTypeOriginal;

    EXPECT_TRUE(bSelectFileType(cb, 8));
    EXPECT_EQ(cb.List(cb.ListIndex()), "[8] Portable Network Graphics (*.png)");
    EXPECT_FALSE(bSelectFileType(cb, 0));
    EXPECT_EQ(lSelectedFileType(cb), 8);
}

TEST(SelectedFileType, IsNoTypeIfTheListIsEmpty)
{
    TestApplication app;
    EXPECT_EQ(lSelectedFileType(app.frmMain.cbFileTypeTarget), kNoFileType);
}

TEST(FileTypeInEntryText, IsTheNumberInBrackets)
{
    EXPECT_EQ(lFileTypeInEntryText("[8] Portable Network Graphics (*.png)"), 8);
    EXPECT_EQ(lFileTypeInEntryText("[-1] Autodetect from file name"), -1);
    EXPECT_EQ(lFileTypeInEntryText("[11]"), 11);
    for (const char* sText : {"", "8", "[", "[]", "[x] y", "8] [9]"})
        EXPECT_EQ(lFileTypeInEntryText(sText), kNoFileType) << sText;
}
