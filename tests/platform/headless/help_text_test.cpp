// The help as plain text.
#include "src/platform/headless/help_text.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "tests/support/paths.h"

static constexpr const char* kDocument =
    "<html><body>\n<h1>Guide</h1>\n<p>First\nwords.</p>\n"
    "<h2 id=\"1\">One</h2>\n<p>About <b>one</b> &amp; &lt;two&gt;</p>\n"
    "<h2 id=\"3\">Three</h2>\n<table>\n<tr><th>Switch</th><th>Meaning</th></tr>\n"
    "<tr><td>/S path</td><td>source</td></tr>\n</table>\n<pre><code>a  b\nc</code></pre>\n"
    "<h3 id=\"31\">Thirty-one</h3>\n<p>Within three</p>\n</body></html>\n";

TEST(HelpTopicText, EndsBeforeTheNextHeadingOfItsLevel)
{
    EXPECT_EQ(HelpTopicText(kDocument, 1), "One\nAbout one & <two>\n");
    EXPECT_EQ(HelpTopicText(kDocument, 31), "Thirty-one\nWithin three\n");
}

TEST(HelpTopicText, WritesRowsAndExamplesAsLines)
{
    EXPECT_EQ(HelpTopicText(kDocument, 3),
              "Three\nSwitch    Meaning\n/S path   source\na  b\nc\nThirty-one\nWithin three\n");
}

TEST(HelpTopicText, IsTheWholeDocumentForNoTopic)
{
    const std::string text = HelpTopicText(kDocument, -1234);

    EXPECT_TRUE(text.starts_with("Guide\nFirst words.\nOne\n"));
    EXPECT_TRUE(text.ends_with("Within three\n"));
}

TEST(HelpTopicText, IsEmptyForAnUnknownTopic)
{
    EXPECT_EQ(HelpTopicText(kDocument, 2), "");
    EXPECT_EQ(HelpTopicText("", 1), "");
    EXPECT_EQ(HelpTopicText("", -1), "");
    EXPECT_EQ(HelpTopicText("<", -1), "");
}

TEST(HelpTopicText, SurvivesADocumentThatIsCutShort)
{
    const std::string document = kDocument;
    for (std::size_t length = 0; length < document.size(); ++length)
        for (const std::int32_t topic : {-1, 1, 3, 31})
            EXPECT_LE(HelpTopicText(document.substr(0, length), topic).size(), length + 10);
}

TEST(HelpTopicText, ExplainsEachSwitchOfTheCommandLine)
{
    std::ifstream file(SourceFolder() + "/share/Help/Varnel.html");
    std::stringstream document;
    document << file.rdbuf();

    const std::string text = HelpTopicText(document.str(), 30);

    for (const char* line :
         {"/S path  ", "/F n  ",    "/T path  ", "/C n  ",    "/V  ",       "/Z  ",      "/R  ",
          "/G  ",      "/L path  ", "/B path  ", "/J path  ", "/P n  ",     "/O  ",      "/?  ",
          "/1  ",      "/2  ",      "/3  ",      "/4  ",      "/5 to /9  ", "/a to /i  "})
        EXPECT_NE(text.find(std::string("\n") + line), std::string::npos) << line;
}
