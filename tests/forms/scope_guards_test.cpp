// Flags that hold for a scope.
#include "src/forms/scope_guards.h"

#include <stdexcept>

#include "tests/fakes/test_application.h"

TEST(InternalChange, StaysSetUntilTheOutermostScopeEnds)
{
    TestApplication app;
    {
        const InternalChange objOuter(app);
        {
            const InternalChange objInner(app);
            EXPECT_TRUE(app.bInternalGridChange);
        }
        EXPECT_TRUE(app.bInternalGridChange);
    }
    EXPECT_FALSE(app.bInternalGridChange);
}

TEST(InternalChange, IsPutBackWhenAnErrorLeavesTheScope)
{
    TestApplication app;
    const InternalChange objOuter(app);

    const auto fnRaise = [&] {
        const InternalChange objInner(app);
        const InternalChange objInnermost(app);
        throw std::runtime_error("raised");
    };
    EXPECT_THROW(fnRaise(), std::runtime_error);
    EXPECT_TRUE(app.bInternalGridChange);

    app.bInternalGridChange = false;
    EXPECT_THROW(fnRaise(), std::runtime_error);
    EXPECT_FALSE(app.bInternalGridChange);
}

TEST(InternalChange, EndsClearedInsideAnotherOnRequest)
{
    TestApplication app;
    {
        const InternalChange objOuter(app);
        {
            const InternalChange objInner(app, InternalChange::After::Clear);
            EXPECT_TRUE(app.bInternalGridChange);
        }
        EXPECT_FALSE(app.bInternalGridChange);
    }
    EXPECT_FALSE(app.bInternalGridChange);
}

TEST(BusyPointer, ShowsTheHourglassUntilTheOutermostScopeEnds)
{
    TestApplication app;
    {
        const BusyPointer objOuter(app);
        {
            const BusyPointer objInner(app);
            EXPECT_TRUE(app.frmMainMDI.Hourglass());
        }
        EXPECT_TRUE(app.frmMainMDI.Hourglass());
    }
    EXPECT_FALSE(app.frmMainMDI.Hourglass());
}

TEST(BusyPointer, IsPutBackWhenAnErrorLeavesTheScope)
{
    TestApplication app;

    const auto fnRaise = [&] {
        const BusyPointer objPointer(app);
        throw std::runtime_error("raised");
    };

    EXPECT_THROW(fnRaise(), std::runtime_error);
    EXPECT_FALSE(app.frmMainMDI.Hourglass());
}

TEST(BusyPointer, CanLeaveTheHourglassOn)
{
    TestApplication app;
    {
        BusyPointer objPointer(app);
        objPointer.LeaveOn();
    }
    EXPECT_TRUE(app.frmMainMDI.Hourglass());
}
