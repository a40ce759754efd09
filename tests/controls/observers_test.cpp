// Who watches: any number, who come and go as they like.
#include "src/controls/observers.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include "tests/fakes/recording_views.h"

namespace
{

struct TwoFields : Form {
    TwoFields() : Form("frmTwo") {}
    TextBox txt{*this, "txt"};
    CheckBox chk{*this, "chk"};
};

/// Does something when it is told of a text.
struct ActingView : TextObserver {
    explicit ActingView(TextBox& txt) : m_objWatch(txt, *this) {}
    void TextChanged() override
    {
        ++nTold;
        if (fnAct)
            fnAct();
    }
    int nTold = 0;
    std::function<void()> fnAct;

private:
    Observation m_objWatch;
};

}  // namespace

TEST(Observers, AreAllToldInTheirOrder)
{
    TwoFields frm;
    std::string sOrder;
    ActingView objFirst(frm.txt), objSecond(frm.txt);
    objFirst.fnAct = [&] { sOrder += "1"; };
    objSecond.fnAct = [&] { sOrder += "2"; };

    frm.txt.SetText("a");

    EXPECT_EQ(sOrder, "12");
}

TEST(Observers, HearNothingOnceTheirWatchEnded)
{
    TwoFields frm;
    ActingView objStays(frm.txt);
    {
        ActingView objGoes(frm.txt);
        objGoes.fnAct = [] { FAIL(); };
    }
    frm.txt.SetText("a");
    EXPECT_EQ(objStays.nTold, 1);
}

TEST(Observers, MayDestroyThemselvesWhileTold)
{
    TwoFields frm;
    std::optional<ActingView> objFirst(std::in_place, frm.txt);
    ActingView objSecond(frm.txt);
    objFirst->fnAct = [&] { objFirst.reset(); };

    frm.txt.SetText("a");
    frm.txt.SetText("b");

    EXPECT_FALSE(objFirst);
    EXPECT_EQ(objSecond.nTold, 2);
}

TEST(Observers, MayEndTheWatchOfAnotherWhileTold)
{
    TwoFields frm;
    ActingView objFirst(frm.txt);
    std::optional<ActingView> objSecond(std::in_place, frm.txt);
    ActingView objThird(frm.txt);
    objFirst.fnAct = [&] { objSecond.reset(); };

    frm.txt.SetText("a");

    EXPECT_EQ(objThird.nTold, 1);
}

TEST(Observers, ComeWhileOthersAreToldAndHearOfTheNextChange)
{
    TwoFields frm;
    ActingView objFirst(frm.txt);
    std::optional<ActingView> objLate;
    objFirst.fnAct = [&] {
        if (!objLate)
            objLate.emplace(frm.txt);
    };

    frm.txt.SetText("a");
    EXPECT_EQ(objLate->nTold, 0);
    frm.txt.SetText("b");
    EXPECT_EQ(objLate->nTold, 1);
}

TEST(Observers, HearOfChangesMadeWhileTheyAreTold)
{
    TwoFields frm;
    ActingView objFirst(frm.txt), objSecond(frm.txt);
    objFirst.fnAct = [&] { frm.chk.SetValue(1), frm.txt.SetText("b"); };

    frm.txt.SetText("a");

    EXPECT_EQ(frm.txt.Text(), "b");
    EXPECT_EQ(objSecond.nTold, 2);
}

TEST(Observers, KeepTheirErrorsToThemselves)
{
    TwoFields frm;
    ActingView objFirst(frm.txt), objSecond(frm.txt);
    objFirst.fnAct = [] { throw std::bad_alloc(); };
    {
        const RedrawLock objLock(frm.txt);
        EXPECT_NO_THROW(frm.txt.SetText("a"));
    }
    EXPECT_NO_THROW(frm.txt.SetText("b"));

    EXPECT_EQ(objSecond.nTold, 2);
}

TEST(Observers, MayOutliveWhatTheyWatched)
{
    std::optional<TwoFields> frm(std::in_place);
    RecordingView<CheckBox> objView(frm->chk);
    frm.reset();
    EXPECT_EQ(objView.sTold, "");
}

TEST(Observation, OfAnyControlHearsWhatAllControlsHave)
{
    TwoFields frm;
    Records<ControlObserver> objPlain;
    const Observation objWatch(static_cast<Control&>(frm.chk), objPlain);

    frm.chk.SetValue(1);
    frm.chk.SetEnabled(false);

    EXPECT_EQ(objPlain.sTold, "enabled ");
}

TEST(Observation, EndsWhenAnotherTakesItsPlace)
{
    TwoFields frm;
    Records<ControlObserver> objPlain;
    Observation objWatch(static_cast<Control&>(frm.chk), objPlain);
    objWatch = Observation(static_cast<Control&>(frm.txt), objPlain);

    frm.chk.SetVisible(false);
    frm.txt.SetCaption("c");

    EXPECT_EQ(objPlain.sTold, "caption ");
}
