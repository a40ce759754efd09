// Opening the help.
#include "src/commands/modHelp.h"

#include <gtest/gtest.h>

#include "tests/fakes/test_application.h"

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

TEST(LaunchHelp, OpensTheJapaneseHelpAtItsStart)
{
    TestApplication app;
    InitializeHelpFile(app);
    app.objTranslator.sLanguage = "Japanese";

    LaunchHelp(app, kHelpCommandLine);

    EXPECT_EQ(app.windows.help_calls, Texts{"Varnel.HLP#-1234"});
}
