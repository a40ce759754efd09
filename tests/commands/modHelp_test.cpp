// Opening the help.
#include "src/commands/modHelp.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>

#include "src/catalogue/modSpecialProcessCatalogue.h"
#include "tests/fakes/test_application.h"
#include "tests/support/paths.h"

using Texts = std::vector<std::string>;

TEST(HelpFile, HasTheSameNameInAllLanguages)
{
    TestApplication app;
    InitializeHelpFile(app);
    EXPECT_EQ(app.sHelpFile, "Varnel.HLP");

    app.objTranslator.sLanguage = "Japanese";
    InitializeHelpFile(app);
    EXPECT_EQ(app.sHelpFile, "Varnel.HLP");
}

TEST(LaunchHelp, OpensTheTopic)
{
    TestApplication app;
    InitializeHelpFile(app);

    LaunchHelp(app, kHelpCommandLine);
    LaunchHelp(app, kHelpNoTopic);

    EXPECT_EQ(app.windows.help_calls, (Texts{"Varnel.HLP#30", "Varnel.HLP#-1234"}));
}

TEST(LaunchHelp, OpensTheDocumentInTheProgramsOwnFolder)
{
    TestApplication app;
    InitializeHelpFile(app);
    app.files.AddFile("/program/Help/Varnel.html");

    LaunchHelp(app, kHelpCommandLine);

    EXPECT_EQ(app.windows.help_calls, Texts{"/program/Help/Varnel.html#30"});
}

TEST(LaunchHelp, OpensTheJapaneseHelpAtItsStart)
{
    TestApplication app;
    InitializeHelpFile(app);
    app.objTranslator.sLanguage = "Japanese";

    LaunchHelp(app, kHelpCommandLine);

    EXPECT_EQ(app.windows.help_calls, Texts{"Varnel.HLP#-1234"});
}

static std::string sHelpDocument()
{
    std::ifstream objFile(SourceFolder() + "/share/Help/Varnel.html");
    return {std::istreambuf_iterator<char>(objFile), {}};
}

static bool bHasTopic(const std::string& sDocument, std::int32_t lTopic)
{
    return sDocument.find(" id=\"" + std::to_string(lTopic) + "\"") != std::string::npos;
}

TEST(HelpDocument, HasATopicForEachFormAndProcess)
{
    const std::string sDocument = sHelpDocument();

    for (const HelpTopic eTopic : {kHelpMainWindow, kHelpConversionOptions, kHelpOptions, kHelpScheduler,
                                   kHelpImageViewer, kHelpTypeMatch, kHelpAbout, kHelpCommandLine})
        EXPECT_TRUE(bHasTopic(sDocument, eTopic)) << eTopic;
    int lProcesses = 0;
    for (const SpecialProcessRow& objRow : SpecialProcessCatalogue()) {
        EXPECT_TRUE(bHasTopic(sDocument, kHelpFirstProcess + objRow.lSpecialProcess))
            << objRow.lSpecialProcess;
        ++lProcesses;
    }
    EXPECT_GE(lProcesses, 57);
}

TEST(HelpDocument, LinksOnlyToTopicsAndPicturesThatExist)
{
    const std::string sDocument = sHelpDocument();
    const std::regex objLink("(href|src)=\"([^\"]*)\"");

    int lLinks = 0;
    for (std::sregex_iterator it(sDocument.begin(), sDocument.end(), objLink), itEnd; it != itEnd; ++it) {
        const std::string sTarget = (*it)[2];
        if (sTarget.starts_with("#"))
            EXPECT_NE(sDocument.find("id=\"" + sTarget.substr(1) + "\""), std::string::npos) << sTarget;
        else
            EXPECT_TRUE(std::filesystem::exists(SourceFolder() + "/share/Help/" + sTarget)) << sTarget;
        ++lLinks;
    }
    EXPECT_GT(lLinks, 60);
}

TEST(HelpDocument, AgreesWithTheCatalogueAndTheGallery)
{
    EXPECT_EQ(std::system((SourceFolder() + "/tools/make-help --check").c_str()), 0);
}
