// Translating, choosing the language at startup, and collecting untranslated texts.
#include "src/translator/modTranslator.h"

#include <gtest/gtest.h>

#include "src/base/text_encoding.h"
#include "tests/fakes/test_application.h"

using namespace std::string_literals;

static constexpr const char* kGerman = "/program/Languages/German-Varnel.txt";

// An application set to German, with this language file.
struct GermanApplication : TestApplication {
    explicit GermanApplication(const std::string& sFile)
    {
        files.AddFile(kGerman, sFile);
        ini.Set("Language", "Language_Code", "German");
        InitializeTranslator(*this);
    }
    std::string sFile() const { return files.Content(kGerman); }
};

TEST(Translate, ReturnsTheTranslationOfAText)
{
    GermanApplication app("\"Done\",\"Erledigt\"\n");

    EXPECT_EQ(sTranslate(app, "Done"), "Erledigt");
    EXPECT_EQ(sTranslate(app, "Done "), "Done ");
    EXPECT_EQ(sTranslate(app, "done"), "done");
}

TEST(Translate, AppendsUnknownTextsOncePerRun)
{
    GermanApplication app("\"Done\",\"Erledigt\"\n");

    EXPECT_EQ(sTranslate(app, "Task 1"), "Task 1");
    EXPECT_EQ(sTranslate(app, "Task 1"), "Task 1");
    EXPECT_EQ(sTranslate(app, "Task 2"), "Task 2");
    EXPECT_EQ(app.sFile(), "\"Done\",\"Erledigt\"\n\"Task 1\"\n\"Task 2\"\n");
}

TEST(Translate, IgnoresBlankTexts)
{
    GermanApplication app("\"Done\"\n");

    EXPECT_EQ(sTranslate(app, "   "), "   ");
    EXPECT_EQ(sTranslate(app, ""), "");
    EXPECT_EQ(app.objTranslator.dictTranslations.size(), 1u);
    EXPECT_EQ(app.sFile(), "\"Done\"\n");
}

TEST(Translate, WritesNoLanguageFileForEnglish)
{
    TestApplication app;
    InitializeTranslator(app);

    EXPECT_EQ(sTranslate(app, "Done"), "Done");
    EXPECT_EQ(app.objTranslator.dictTranslations.at("Done"), "Done");
    EXPECT_FALSE(app.files.Has("/program/Languages"));
}

TEST(Translate, AppendsAfterTheTerminatorInEveryRun)
{
    GermanApplication app("\"Done\"\n\"****\"\n");
    sTranslate(app, "Add");
    EXPECT_EQ(app.sFile(), "\"Done\"\n\"****\"\n\"Add\"\n");

    GermanApplication objNext(app.sFile());
    sTranslate(objNext, "Add");
    EXPECT_EQ(objNext.sFile(), "\"Done\"\n\"****\"\n\"Add\"\n\"Add\"\n");
}

TEST(AddToLanguageFile, StartsANewLineInTheFilesStyle)
{
    GermanApplication app("\"Done\"\r\n\"Add\"");
    AddToLanguageFile(app, "One");
    AddToLanguageFile(app, "Two");

    EXPECT_EQ(app.sFile(), "\"Done\"\r\n\"Add\"\r\n\"One\"\r\n\"Two\"\r\n");
}

TEST(AddToLanguageFile, UsesTheFilesEncoding)
{
    GermanApplication objUtf8("\xEF\xBB\xBF\"Grün\"\n");
    AddToLanguageFile(objUtf8, "Größe €");
    EXPECT_EQ(objUtf8.sFile(), "\xEF\xBB\xBF\"Grün\"\n\"Größe €\"\n");

    GermanApplication objWestern("\"Gr\xFCn\"\n");
    AddToLanguageFile(objWestern, "Größe € 日");
    EXPECT_EQ(objWestern.sFile(),
              "\"Gr\xFCn\"\n\"Gr\xF6\xDF"
              "e \x80 ?\"\n");

    for (const bool bBigEndian : {false, true}) {
        const std::string sOld = sUtf16FromUtf8("\"Grün\"\r\n", bBigEndian);
        GermanApplication app(sOld);
        EXPECT_EQ(sTranslate(app, "Grün"), "Grün");
        AddToLanguageFile(app, "Größe 日");
        EXPECT_EQ(app.sFile(), sOld + sUtf16FromUtf8("\"Größe 日\"\r\n", bBigEndian));
    }
}

TEST(AddToLanguageFile, DoesNothingForBlankTextsOrWithoutAFile)
{
    GermanApplication app("\"Done\"\n");
    AddToLanguageFile(app, "  ");
    EXPECT_EQ(app.sFile(), "\"Done\"\n");

    TestApplication objEnglish;
    AddToLanguageFile(objEnglish, "Done");
    EXPECT_TRUE(objEnglish.windows.boxes.empty());
}

TEST(AddToLanguageFile, ReportsAnUnwritableFileOnce)
{
    GermanApplication app("\"Error\",\"Fehler\"\n\"Done\"\n");
    app.files.MakeReadOnly(kGerman);
    sTranslate(app, "One");
    sTranslate(app, "Two");

    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.windows.boxes[0].text, "Unable to add to Language file");
    EXPECT_EQ(app.windows.boxes[0].title, "Fehler");
    EXPECT_EQ(app.windows.boxes[0].icon, BoxIcon::Warning);
    EXPECT_EQ(app.windows.boxes[0].buttons, BoxButtons::Ok);
}

TEST(AddToLanguageFile, DoesNotRecreateADeletedFile)
{
    GermanApplication app("\"Done\"\n");
    app.files.DeleteFile(kGerman);
    sTranslate(app, "One");

    EXPECT_FALSE(app.files.Has(kGerman));
    EXPECT_EQ(app.windows.boxes.size(), 1u);
}

TEST(InitializeTranslator, ReadsLanguageAndFontFromTheSettings)
{
    TestApplication app;
    app.files.AddFile(kGerman, "\"Done\",\"Erledigt\"\n");
    app.ini.Set("Language", "Language_Code", "German");
    app.ini.Set("Language", "Language_Font", "DejaVu Sans");
    app.locale.lcid = 1031;

    InitializeTranslator(app);

    EXPECT_EQ(app.objTranslator.sLanguage, "German");
    EXPECT_EQ(app.objTranslator.sLanguageFile, kGerman);
    EXPECT_EQ(app.objTranslator.sLanguageFont, "DejaVu Sans");
    EXPECT_EQ(app.objTranslator.lUserLCID, 1031);
    EXPECT_EQ(app.objTranslator.sProductStem, "Varnel");
    EXPECT_FALSE(app.bDoubleByteLocale);
    EXPECT_TRUE(app.windows.boxes.empty());
    EXPECT_TRUE(app.ini.written.empty());
}

TEST(InitializeTranslator, DetectsDoubleByteLocales)
{
    for (const std::int32_t lLCID : {1041, 1042, 4100, 1028, 3076, 2052, 5124}) {
        TestApplication app;
        app.locale.lcid = lLCID;
        InitializeTranslator(app);
        EXPECT_TRUE(app.bDoubleByteLocale) << lLCID;
    }
}

static int lQuestionsAtFirstStart(std::int32_t lLCID, TestApplication& app)
{
    int lQuestions = 0;
    app.locale.lcid = lLCID;
    InitializeTranslator(app, [&](Application&) { ++lQuestions; });
    return lQuestions;
}

TEST(InitializeTranslator, AsksUsersOfOtherLocalesOnce)
{
    for (const std::int32_t lLCID : {1033, 2057}) {
        TestApplication app;
        EXPECT_EQ(lQuestionsAtFirstStart(lLCID, app), 0);
        EXPECT_EQ(app.ini.Stored("Language", "Language_Code"), "English");
    }
    TestApplication app;
    EXPECT_EQ(lQuestionsAtFirstStart(1031, app), 1);
    EXPECT_EQ(app.ini.Stored("Language", "Language_Code"), "English");
    EXPECT_EQ(lQuestionsAtFirstStart(1031, app), 0);
}

TEST(InitializeTranslator, LoadsTheChosenLanguage)
{
    TestApplication app;
    app.locale.lcid = 1031;
    app.files.AddFile(kGerman, "\"Done\",\"Erledigt\"\n");
    InitializeTranslator(app, [](Application& objAsked) {
        EXPECT_EQ(objAsked.objTranslator.sLanguage, "English");
        objAsked.objTranslator.sLanguage = "German";
    });

    EXPECT_EQ(app.ini.Stored("Language", "Language_Code"), "German");
    EXPECT_EQ(sTranslate(app, "Done"), "Erledigt");
}

TEST(InitializeTranslator, FallsBackToEnglishIfTheUserCancels)
{
    TestApplication app;
    app.locale.lcid = 1031;
    InitializeTranslator(app, [](Application& objAsked) { objAsked.objTranslator.sLanguage = ""; });

    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.objTranslator.sLanguage, "English");
    EXPECT_EQ(app.ini.Stored("Language", "Language_Code"), "English");
}

TEST(InitializeTranslator, NeitherAsksNorSavesWithoutWindows)
{
    for (const std::int32_t lLCID : {1031, 1033}) {
        TestApplication app;
        app.locale.lcid = lLCID;
        InitializeTranslator(app);
        EXPECT_EQ(app.objTranslator.sLanguage, "English");
        EXPECT_TRUE(app.ini.written.empty());
        EXPECT_TRUE(app.windows.boxes.empty());
    }
}

static void ExpectFailure(TestApplication& app, const std::string& sText)
{
    app.ini.Set("Language", "Language_Code", "German");
    app.ini.Set("Language", "Language_Font", "DejaVu Sans");

    InitializeTranslator(app);

    ASSERT_EQ(app.windows.boxes.size(), 1u);
    EXPECT_EQ(app.windows.boxes[0].text, sText + ": \n" + kGerman + "\nDefaulting to English");
    EXPECT_EQ(app.windows.boxes[0].title, "Error");
    EXPECT_EQ(app.windows.boxes[0].icon, BoxIcon::Warning);
    EXPECT_EQ(app.objTranslator.sLanguage, "English");
    EXPECT_EQ(app.objTranslator.sLanguageFont, "");
    EXPECT_EQ(app.ini.Stored("Language", "Language_Code"), "English");
    EXPECT_EQ(sTranslate(app, "Done"), "Done");
    EXPECT_EQ(app.windows.boxes.size(), 1u);
}

TEST(InitializeTranslator, FallsBackToEnglishIfTheFileIsMissing)
{
    TestApplication app;
    ExpectFailure(app, "Unable to locate Language file");
}

TEST(InitializeTranslator, FallsBackToEnglishIfTheFormatIsUnreadable)
{
    for (const std::string& sBytes : {""s, "Done\n"s, "\n\"Done\"\n"s,
                                      "\x7F"
                                      "ELF\0\xFF\xFE"s,
                                      "\xFF\xFE"s}) {
        TestApplication app;
        app.files.AddFile(kGerman, sBytes);
        ExpectFailure(app, "Unable to read Language file");
    }
}

// Returns a file's bytes only once and then fails, like a disk that was removed.
struct FailingFileSystem : FakeFileSystem {
    mutable int lReads = 0;
    std::optional<std::string> sReadBytes(const std::string& sPath) const override
    {
        return ++lReads == 1 ? FakeFileSystem::sReadBytes(sPath) : std::nullopt;
    }
};

TEST(InitializeTranslator, FallsBackToEnglishIfReadingFails)
{
    TestServices svc;
    FailingFileSystem objFiles;
    objFiles.AddFile(kGerman, "\"Done\",\"Erledigt\"\n");
    Application app(Services{objFiles, svc.ini, svc.clock, svc.locale, svc.mutex, svc.folders, svc.windows,
                             svc.images, svc.utility, svc.transform, svc.launcher});
    SetLanguageCode(app, "German");

    InitializeTranslator(app);

    ASSERT_EQ(svc.windows.boxes.size(), 1u);
    EXPECT_EQ(svc.windows.boxes[0].text,
              "Unable to process Language file: \n"s + kGerman + "\nDefaulting to English");
    EXPECT_EQ(sGetLanguageCode(app), "English");
}

TEST(InitializeTranslator, AcceptsACommentInTheFirstLine)
{
    GermanApplication app("\"! comment\n\"Done\",\"Erledigt\"\n");

    EXPECT_TRUE(app.windows.boxes.empty());
    EXPECT_EQ(sTranslate(app, "Done"), "Erledigt");
}

TEST(InitializeTranslator, LoadsUtf16WithAndWithoutAMark)
{
    for (const bool bBigEndian : {false, true}) {
        const std::string sMark = bBigEndian ? "\xFE\xFF" : "\xFF\xFE";
        for (const std::string& sHead : {""s, sMark}) {
            GermanApplication app(sHead + sUtf16FromUtf8("\"Done\",\"Erledigt – 完\"\r\n", bBigEndian));
            EXPECT_EQ(app.objTranslator.iLanguageFileFormat, LanguageFileFormat::Utf16);
            EXPECT_EQ(sTranslate(app, "Done"), "Erledigt – 完");
        }
    }
}

TEST(InitializeTranslator, SurvivesBinaryDataAfterAQuote)
{
    std::string sRubbish = "\"";
    for (int n = 0; n < 5000; ++n)
        sRubbish += static_cast<char>(n * 7919 >> 3);
    GermanApplication app(sRubbish);

    EXPECT_EQ(sTranslate(app, "Done"), "Done");
}

TEST(LanguageFont, IsStoredInTheSettings)
{
    TestApplication app;
    EXPECT_EQ(sGetLanguageFont(app), "");
    SetLanguageFont(app, "DejaVu Sans");
    SetLanguageCode(app, "German");

    EXPECT_EQ(sGetLanguageFont(app), "DejaVu Sans");
    EXPECT_EQ(sGetLanguageCode(app), "German");
    EXPECT_EQ(app.ini.Stored("language", "language_font"), "DejaVu Sans");
}

TEST(LanguageCode, IsLimitedTo127Characters)
{
    TestApplication app;
    SetLanguageCode(app, std::string(200, 'x'));

    EXPECT_EQ(sGetLanguageCode(app), std::string(127, 'x'));
}

TEST(LanguageFilePath, IsInTheProgramsLanguagesFolder)
{
    TestApplication app;

    EXPECT_EQ(sLanguageFilePath(app, "Japanese"), "/program/Languages/Japanese-Varnel.txt");
}

TEST(DetectLanguageFileFormat, ReturnsUnreadableForAMissingFile)
{
    TestApplication app;
    app.files.AddFile("/a.txt", "\"Done\"");

    EXPECT_EQ(static_cast<int>(iDetectLanguageFileFormat(app, "/a.txt")), 0);
    EXPECT_EQ(static_cast<int>(iDetectLanguageFileFormat(app, "/gone.txt")), 99);
}

TEST(LoadLanguageFile, ClearsTheTableAndFailsForAMissingFile)
{
    TestApplication app;
    sTranslate(app, "Done");
    app.objTranslator.sLanguageFile = "/gone.txt";

    EXPECT_FALSE(bLoadLanguageFile(app));
    EXPECT_TRUE(app.objTranslator.dictTranslations.empty());
}
