// Combo boxes: entries, selection and text, by the program and by a person.
#include "src/controls/lists/combo_box.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "src/base/raised_error.h"
#include "tests/fakes/recording_views.h"

namespace
{

/// A combo box of "one" (11) and "two" (22), and what it raises.
struct ComboForm : Form {
    ComboForm() : Form("frmCombo")
    {
        for (ComboBox* p : {&cb, &cbList}) {
            p->AddItem("one", 11);
            p->AddItem("two", 22);
            p->OnClick = [this] { ++nClick; };
            p->OnChange = [this] { ++nChange; };
        }
    }
    ComboBox cb{*this, "cb"};
    ComboBox cbList{*this, "cbList", ComboStyle::ListOnly};
    int nClick = 0;
    int nChange = 0;
};

}  // namespace

TEST(ComboBox, HasEntriesWithNumbersOfTheirOwn)
{
    ComboForm frm;

    EXPECT_EQ(frm.cb.ListCount(), 2);
    EXPECT_EQ(frm.cb.List(1), "two");
    EXPECT_EQ(frm.cb.ItemData(1), 22);
    EXPECT_EQ(frm.cb.ListIndex(), -1);
    EXPECT_EQ(frm.cb.Text(), "");
}

TEST(ComboBox, ClicksForEverySelectionAlsoOfTheSameEntry)
{
    ComboForm frm;
    RecordingView<ComboBox> objView(frm.cb);

    frm.cb.SetListIndex(1);
    frm.cb.SetListIndex(1);

    EXPECT_EQ(frm.cb.Text(), "two");
    EXPECT_EQ(frm.nClick, 2);
    EXPECT_EQ(frm.nChange, 0);
    EXPECT_EQ(objView.sTold, "index text index ");
}

TEST(ComboBox, DeselectsWithMinusOne)
{
    ComboForm frm;
    frm.cb.SetListIndex(0);
    frm.cb.SetListIndex(-1);
    EXPECT_EQ(frm.cb.ListIndex(), -1);
    EXPECT_EQ(frm.cb.Text(), "");
}

TEST(ComboBox, RaisesAnErrorForAnEntryThatIsntThere)
{
    ComboForm frm;
    frm.cb.SetListIndex(1);
    for (const std::int32_t lIndex : {2, -2, 1000000})
        EXPECT_THROW(frm.cb.SetListIndex(lIndex), clsRaisedError);
    EXPECT_EQ(frm.cb.ListIndex(), 1);
}

TEST(ComboBox, HasNoEntrySelectedOnceATextIsTyped)
{
    ComboForm frm;
    frm.cb.SetListIndex(1);
    frm.nClick = 0;

    frm.cb.SetText("own");

    EXPECT_EQ(frm.cb.ListIndex(), -1);
    EXPECT_EQ(frm.cb.Text(), "own");
    EXPECT_EQ(frm.nChange, 1);
    EXPECT_EQ(frm.nClick, 0);
}

TEST(ComboBox, TellsTheViewThatNoEntryIsSelectedAlsoWhenTheTextStays)
{
    ComboForm frm;
    frm.cb.SetListIndex(1);
    RecordingView<ComboBox> objView(frm.cb);

    frm.cb.SetText("two");

    EXPECT_EQ(frm.cb.ListIndex(), -1);
    EXPECT_EQ(objView.sTold, "index ");
    EXPECT_EQ(frm.nChange, 0);
}

TEST(ComboBox, ForgetsAllWhenCleared)
{
    ComboForm frm;
    frm.cb.SetListIndex(1);
    RecordingView<ComboBox> objView(frm.cb);

    frm.cb.Clear();
    frm.cb.Clear();

    EXPECT_EQ(frm.cb.ListCount(), 0);
    EXPECT_EQ(frm.cb.ListIndex(), -1);
    EXPECT_EQ(frm.cb.Text(), "");
    EXPECT_EQ(objView.sTold, "items text ");
}

TEST(ComboBox, TellsTheViewOnceOf500Entries)
{
    ComboForm frm;
    RecordingView<ComboBox> objView(frm.cb);
    {
        const RedrawLock objLock(frm.cb);
        frm.cb.Clear();
        for (std::int32_t l = 0; l < 500; ++l)
            frm.cb.AddItem("entry " + std::to_string(l), l);
        frm.cb.SetListIndex(7);
        EXPECT_EQ(objView.sTold, "");
    }
    EXPECT_EQ(objView.sTold, "items index text ");
    EXPECT_EQ(frm.nClick, 1);
}

TEST(ComboBox, ClicksWhenAPersonChoosesAnEntryOrTheSameAgain)
{
    ComboForm frm;

    frm.cb.UserChooses(1);
    frm.cb.UserChooses(1);
    frm.cb.UserChooses(2);
    frm.cb.UserChooses(-1);

    EXPECT_EQ(frm.cb.ListIndex(), 1);
    EXPECT_EQ(frm.nClick, 2);
    EXPECT_EQ(frm.nChange, 0);
}

TEST(ComboBox, ChangesWhenAPersonTypes)
{
    ComboForm frm;
    frm.cb.SetListIndex(1);
    frm.nClick = 0;

    frm.cb.UserTypes("tw");

    EXPECT_EQ(frm.cb.ListIndex(), -1);
    EXPECT_EQ(frm.nChange, 1);
    EXPECT_EQ(frm.nClick, 0);
}

TEST(ComboBox, ShowsAPersonWhatIsSoWhereAnActIsRefused)
{
    ComboForm frm;
    RecordingView<ComboBox> objView(frm.cb);
    frm.cb.SetEnabled(false);
    objView.sTold.clear();

    frm.cb.UserChooses(1);
    frm.cb.UserTypes("own");

    EXPECT_EQ(frm.cb.ListIndex(), -1);
    EXPECT_EQ(frm.nClick + frm.nChange, 0);
    EXPECT_EQ(objView.sTold, "index text ");
}

TEST(ComboBox, HasNoFieldToTypeInWhereItIsOnlyAList)
{
    ComboForm frm;
    RecordingView<ComboBox> objView(frm.cbList);

    frm.cbList.UserTypes("own");
    EXPECT_EQ(objView.sTold, "text ");
    frm.cbList.SetText("own");
    EXPECT_EQ(frm.cbList.Text(), "");
    frm.cbList.SetText("two");
    frm.cbList.SetText("two");

    EXPECT_EQ(frm.cbList.ListIndex(), 1);
    EXPECT_EQ(frm.nClick, 1);
    EXPECT_EQ(frm.nChange, 0);
}
