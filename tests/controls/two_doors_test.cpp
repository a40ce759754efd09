// A small form as a whole: a person acts through a view, the program writes, and neither hears its own words.
#include "src/controls/command_button.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "src/controls/label.h"
#include "tests/fakes/recording_views.h"

namespace
{

struct frmJob : Form {
    frmJob() : Form("frmJob") {}
    Frame frameFields{*this, "frameFields"};
    TextBox txtTitle{frameFields, "txtTitle"};
    ComboBox cbType{frameFields, "cbType"};
    CheckBox cbDeep{frameFields, "cbDeep"};
    CommandButton cmdAdd{*this, "cmdAdd"};
    Label lblState{*this, "lblState"};
};

/// The logic: counts what it hears, enables Add while there is a title, and shows what was added.
struct JobLogic {
    explicit JobLogic(frmJob& frmNew) : frm(frmNew)
    {
        const RedrawLock objLock(frm.cbType);
        for (const char* sType : {"bmp", "gif", "png"})
            frm.cbType.AddItem(sType);
        frm.cmdAdd.SetEnabled(false);
        frm.txtTitle.OnChange = [this] {
            sHeard += "title ";
            frm.cmdAdd.SetEnabled(!frm.txtTitle.Text().empty());
        };
        frm.cbType.OnClick = [this] { sHeard += "type "; };
        frm.cbType.OnChange = [this] { sHeard += "typetext "; };
        frm.cbDeep.OnClick = [this] { sHeard += "deep "; };
        frm.cmdAdd.OnClick = [this] {
            sHeard += "add ";
            frm.lblState.SetCaption("Added " + frm.txtTitle.Text());
            frm.txtTitle.SetText("");
        };
    }
    frmJob& frm;
    std::string sHeard;
};

/// A window with the worst habit of a toolkit: its widgets report every change, also those that the program
/// made.
struct EchoingWindow {
    explicit EchoingWindow(frmJob& frm) : txt(frm.txtTitle), cb(frm.cbType), chk(frm.cbDeep) {}

    struct TextView : TextObserver {
        explicit TextView(TextBox& txtShown) : control(txtShown), m_objWatch(txtShown, *this) {}
        void TextChanged() override
        {
            sShown = control.Text();
            control.UserTypes(sShown);
        }
        TextBox& control;
        std::string sShown;

    private:
        Observation m_objWatch;
    } txt;

    struct ComboView : ComboBoxObserver {
        explicit ComboView(ComboBox& cbShown) : control(cbShown), m_objWatch(cbShown, *this)
        {
            ItemsChanged();
        }
        void ItemsChanged() override
        {
            aShown.clear();
            for (std::int32_t l = 0; l < control.ListCount(); ++l)
                aShown.push_back(control.List(l));
        }
        void ListIndexChanged() override
        {
            lShown = control.ListIndex();
            control.UserChooses(lShown);
        }
        void TextChanged() override
        {
            sShown = control.Text();
            control.UserTypes(sShown);
        }
        ComboBox& control;
        std::vector<std::string> aShown;
        std::int32_t lShown = -1;
        std::string sShown;

    private:
        Observation m_objWatch;
    } cb;

    struct CheckView : CheckBoxObserver {
        explicit CheckView(CheckBox& chkShown) : control(chkShown), m_objWatch(chkShown, *this) {}
        void ValueChanged() override
        {
            bShown = control.Value() == 1;
            control.UserToggles();
        }
        CheckBox& control;
        bool bShown = false;

    private:
        Observation m_objWatch;
    } chk;
};

}  // namespace

TEST(TwoDoors, BringAPersonsActsToTheLogicOnce)
{
    frmJob frm;
    JobLogic objLogic(frm);
    EchoingWindow objWindow(frm);

    frm.cmdAdd.UserClicks();
    frm.txtTitle.UserTypes("Spring");
    frm.cbType.UserChooses(2);
    frm.cbDeep.UserToggles();
    frm.cmdAdd.UserClicks();

    EXPECT_EQ(objLogic.sHeard, "title type deep add title ");
    EXPECT_EQ(frm.lblState.Caption(), "Added Spring");
    EXPECT_FALSE(frm.cmdAdd.Enabled());
}

TEST(TwoDoors, KeepTheProgramsWordsFromComingBackAsClicks)
{
    frmJob frm;
    JobLogic objLogic(frm);
    EchoingWindow objWindow(frm);

    frm.txtTitle.SetText("Spring");
    frm.cbType.SetListIndex(1);
    frm.cbType.SetText("jpg");
    frm.cbDeep.SetValue(1);

    EXPECT_EQ(objLogic.sHeard, "title type typetext deep ");
    EXPECT_EQ(frm.cbDeep.Value(), 1);
    EXPECT_EQ(frm.cbType.Text(), "jpg");
}

TEST(TwoDoors, MirrorTheControlsInEveryView)
{
    frmJob frm;
    JobLogic objLogic(frm);
    EchoingWindow objOne(frm), objOther(frm);

    frm.txtTitle.UserTypes("Spring");
    frm.cbType.UserChooses(2);
    frm.cbDeep.SetValue(1);

    for (const EchoingWindow* p : {&objOne, &objOther}) {
        EXPECT_EQ(p->txt.sShown, "Spring");
        EXPECT_EQ(p->cb.aShown, (std::vector<std::string>{"bmp", "gif", "png"}));
        EXPECT_EQ(p->cb.lShown, 2);
        EXPECT_EQ(p->cb.sShown, "png");
        EXPECT_TRUE(p->chk.bShown);
    }
}

TEST(TwoDoors, CloseForAPersonWithTheFrameAroundTheFields)
{
    frmJob frm;
    JobLogic objLogic(frm);
    frm.frameFields.SetEnabled(false);

    frm.txtTitle.UserTypes("Spring");
    frm.cbType.UserChooses(1);
    frm.cbDeep.UserToggles();
    EXPECT_EQ(objLogic.sHeard, "");

    frm.txtTitle.SetText("Spring");
    frm.cmdAdd.UserClicks();
    EXPECT_EQ(objLogic.sHeard, "title add title ");
}
