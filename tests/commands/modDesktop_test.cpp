// Opening things with the desktop.
#include "src/commands/modDesktop.h"

#include "tests/fakes/test_application.h"

TEST(OpenPath, HandsThePathToTheDesktop)
{
    TestApplication app;

    EXPECT_TRUE(bOpenPath(app, "C:\\pics\\a.bmp"));
    EXPECT_TRUE(bOpenAddress(app, "mailto:sales@example.org"));

    EXPECT_EQ(app.launcher.opened,
              (std::vector<std::string>{"path C:\\pics\\a.bmp", "address mailto:sales@example.org"}));
    EXPECT_EQ(app.windows.do_events, 0);
}

TEST(OpenPath, FailsWithoutAnOpener)
{
    TestApplication app;
    app.launcher.can_open = false;

    EXPECT_FALSE(bOpenPath(app, "/a.bmp"));
    EXPECT_FALSE(bOpenAddress(app, "https://example.org"));
}

TEST(OpenPath, FailsWhenTheOpenerFails)
{
    TestApplication app;
    app.launcher.exit_code = 3;
    app.launcher.polls_until_exit = 4;

    EXPECT_FALSE(bOpenPath(app, "/a.bmp"));

    EXPECT_EQ(app.windows.do_events, 3);
}

TEST(OpenPath, TakesAnOpenerThatStaysForASuccess)
{
    TestApplication app;
    app.launcher.polls_until_exit = 0;
    app.clock.ticks_per_call = 20;

    EXPECT_TRUE(bOpenPath(app, "/a.bmp"));

    EXPECT_EQ(app.launcher.waits.size(), 50u);
    EXPECT_EQ(app.windows.do_events, 49);
}
