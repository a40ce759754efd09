// Which inputs the panel shows for each process, on which tab and with which texts.
#include <algorithm>
#include <string>
#include <vector>

#include "tests/panel/support/panel_form.h"

namespace
{

/// A tab of a process: the inputs that it shows ("1", "1b", "1c", "2", "check", "list", "colour", in this
/// order) and the texts of the two labels and of the check box.
struct TabOfProcess {
    std::int32_t lSpecialProcess;
    const char* sCaption;
    const char* sInputs;
    const char* sLabel1 = "";
    const char* sLabel2 = "";
    const char* sCheck = "";
};

const char* const kLevel255 = "Adjust color level [-255 to 255]";
const char* const kCorrection = "Specify a correction direction";
const char* const kPitch90 = "(degrees) Pitch angle [-90.0 to +90.0]";
const char* const kThreshold = "Threshold level [0 to 255]";
const char* const kAngle360 = "Angle [0.0 to 360.0]";
const char* const kDirection = "Irregularity direction";
const char* const kDetection = "Irregularity direction detection";
const char* const kSquareTab = "Color Level, Threshold and Square";

const TabOfProcess kTabs[] = {
    {2, "Width And Height", "1 2 check", "(pixels) Width of image", "(pixels) Height of image",
     "Retain Aspect Ratio"},
    {2, "Interpolation", "list", "Method of interpolation of pixel color"},
    {2, "Background Color", "colour"},
    {3, "Angle of Rotation", "1", "(degrees) Angle of rotation [-360.0 to +360.0]"},
    {3, "Background Color", "colour"},
    {5, "Flip Direction", "list", "Specify a flip direction"},
    {6, "Offset", "1 2", "(pixels) Horizontal offset", "(pixels) Vertical offset"},
    {6, "Background Color", "colour"},
    {7, "Correction Direction and Angle", "2 list", kCorrection, kPitch90},
    {8, "Correction Direction and Angle", "2 list", kCorrection, kPitch90},
    {9, "Angle", "1", "(degrees) Pitch angle [-360.0 to +360.0]"},
    {10, "Number of copies", "1", "Number of copies [1 to 32]"},
    {13, "Hue", "1", "Hue, color rotation [-360.0 to 360.0]"},
    {13, "Lightness", "1b", "Lightness [-1.0 to 1.0]"},
    {13, "Saturation", "1c", "Saturation [-1.0 to 1.0]"},
    {14, "Color Adjustment", "1", kLevel255},
    {15, "Brightness", "1", "Adjust brightness level [-255 to 255]"},
    {16, "Red", "1", "Red [0 to 255]"},
    {16, "Green", "1b", "Green [0 to 255]"},
    {16, "Blue", "1c", "Blue [0 to 255]"},
    {17, "Contrast", "1", "Coefficient of Color Stretch [0.0 to 1.0]"},
    {19, "Equalize", "1", "Brightness level [Must be >= 0.0]"},
    {20, "Gamma", "1", "Gamma level. [Must be >= 0.0, 1.0 = No change]"},
    {21, "Color Adjustment", "1", kLevel255},
    {22, "Hue", "1", "Hue. Angle of color rotation [-360.0 to +360.0]"},
    {25, "Lightness", "1", "-1.0 (all black) to 1.0 (all white)"},
    {26, "Number of Tonal Levels for each channel", "1",
     "Number of Tonal Levels for each channel [2 to 255]"},
    {27, "Color Adjustment", "1", kLevel255},
    {28, "Saturation Level", "1",
     "Saturation level. -1.0 (same as desaturate) to 1.0 (all pixels extremely saturated)"},
    {29, "Center", "1",
     "Threshold level [0 to 255].  All pixels greater than threshold are turned to white, less than to "
     "black"},
    {31, "Level and Noise Type", "2 list", "Type of noise to apply", "Noise level [must be >= 0]"},
    {32, "Distance and Penetration", "1 2",
     "(pixels) Maximum displacement distance of diffusion [Must be >= 0]", "Penetration. [>=0]"},
    {33, kSquareTab, "1 2 check", "Color level to dilate [0 to 255]", kThreshold,
     "Square Color Dilation (unchecked means cross color dilation)"},
    {34, "Angle", "1", kAngle360},
    {34, "Height", "1b", "Height [0 to 16]"},
    {34, "Brightness", "1c", "Brightness adjustment [>0.0]"},
    {35, kSquareTab, "1 2 check", "Color level to erode [0 to 255]", kThreshold,
     "Square Color Erosion (unchecked means cross color erosion)"},
    {36, "Amount", "1", "Fuzziness [0 to 255]"},
    {37, "Size and Contrast", "1 2", "Size of halftone cell [1 to 255]",
     "Contrasting level of the halftone pattern"},
    {38, "Tile Size and Complexity", "1 check", "(pixels) Tile size [>=1]", "",
     "No color interpratation (Unchecked is more realistic)"},
    {39, "Angle and Amount", "1 2", kAngle360, "Amount of intensity [2 to 255]"},
    {40, "Displacement Level", "1", "(Percent) Displacement level [0.0 to 100.0]"},
    {41, "Angle", "1", kAngle360},
    {41, "Brightness", "1b", "Brightness [>=0.0]"},
    {41, "Smoothness", "1c", "Evening-out relief map value [0.0 to 16.0]"},
    {42, "Angle and Brightness", "1 2", "(percent) Angle of light [0.0 to 360.0]", "Brightness [>=0.0]"},
    {42, "Type", "list", "Type of embossing texture"},
    {43, "Level, Threshold and Intensity", "1 2 check", "Level [0 to 255]", kThreshold,
     "Do intensity contours (unchecked means do color contours)"},
    {44, "Fuzzy Level", "1", "(percent) Blur intensity [0.0 to 100.0]"},
    {45, "Filter type", "list", "High pass filter type"},
    {46, "Filter type", "list", "Low pass filter type"},
    {47, "Filter type", "list", "Search direction"},
    {48, "Filter type", "list", "Filter type.."},
    {49, kDetection, "list", kDirection},
    {50, kDetection, "list", kDirection},
    {51, kDetection, "list", kDirection},
    {52, kDetection, "list", kDirection},
    {53, kDetection, "list", kDirection},
    {54, "Amount", "1", "[0.0 to +1.0]"},
    {55, "Amount", "1", "[0.0 to +1.0]"},
    {58, "Size", "1", "Size of the filtering [1 to 256]"},
    {59, "Size", "1", "Size of the filtering [1 to 256]"},
    {60, "Even/Odd and Interpolation", "check list", "Select which lines to deinterlace", "",
     "Interpolate Colors"},
};

const std::int32_t kWithoutTabs[] = {4, 11, 12, 18, 23, 24};

class Slots : public PanelForm
{
protected:
    std::string sVisibleInputs() const
    {
        std::string sInputs;
        const auto Add = [&](const Control& objInput, const char* sName) {
            if (objInput.Visible())
                sInputs += (sInputs.empty() ? "" : " ") + std::string(sName);
        };
        Add(frm.txtSpecialProcessTextEntry1, "1");
        Add(frm.txtSpecialProcessTextEntry1b, "1b");
        Add(frm.txtSpecialProcessTextEntry1c, "1c");
        Add(frm.txtSpecialProcessTextEntry2, "2");
        Add(frm.cbSpecialProcessBoolean, "check");
        Add(frm.cbSpecialProcessListBox, "list");
        Add(frm.cmdSpecialProcessShowDialog, "colour");
        return sInputs;
    }
    static std::string sVisibleCaption(const Control& objControl)
    {
        return objControl.Visible() ? objControl.Caption() : "";
    }
    void ExpectBesideInputs() const
    {
        EXPECT_EQ(frm.VScrollSpecialProcess1.Visible(), txt1.Visible());
        EXPECT_EQ(frm.VScrollSpecialProcess1b.Visible(), txt1b.Visible());
        EXPECT_EQ(frm.VScrollSpecialProcess1c.Visible(), txt1c.Visible());
        EXPECT_EQ(frm.VScrollSpecialProcess2.Visible(), txt2.Visible());
        EXPECT_EQ(frm.lblColorSelected1.Visible(), frm.cmdSpecialProcessShowDialog.Visible());
        EXPECT_EQ(frm.lblColorSelected2.Visible(), frm.cmdSpecialProcessShowDialog.Visible());
    }
};

}  // namespace

TEST_F(Slots, AreThoseOfEachTabOfEachProcess)
{
    std::size_t nChecked = 0;
    std::int32_t lTab = 0;
    for (const TabOfProcess& objTab : kTabs) {
        const bool bSameProcess =
            nChecked > 0 && kTabs[nChecked - 1].lSpecialProcess == objTab.lSpecialProcess;
        SCOPED_TRACE(std::to_string(objTab.lSpecialProcess) + " " + objTab.sCaption);
        lTab = bSameProcess ? lTab + 1 : 1;
        if (!bSameProcess)
            Choose(objTab.lSpecialProcess);
        ASSERT_LE(lTab, tsParameters.TabCount());
        EXPECT_EQ(tsParameters.SelectedTab(), bSameProcess ? lTab - 1 : 1);
        tsParameters.UserChooses(lTab);

        EXPECT_EQ(tsParameters.TabCaption(lTab), objTab.sCaption);
        EXPECT_EQ(sVisibleInputs(), objTab.sInputs);
        EXPECT_EQ(sVisibleCaption(frm.lblSpecialProcessTextEntryDescription1), objTab.sLabel1);
        EXPECT_EQ(sVisibleCaption(frm.lblSpecialProcessTextEntryDescription2), objTab.sLabel2);
        EXPECT_EQ(sVisibleCaption(cbCheck), objTab.sCheck);
        ExpectBesideInputs();
        ++nChecked;
    }
    EXPECT_EQ(nChecked, 63u);
}

TEST_F(Slots, AreNoneWhereAProcessHasNoParameters)
{
    for (const std::int32_t lSpecialProcess : kWithoutTabs) {
        Choose(SP_TRANSFORM_RESIZE);
        Choose(lSpecialProcess);

        EXPECT_EQ(tsParameters.TabCount(), 0);
        EXPECT_FALSE(tsParameters.Visible());
        EXPECT_EQ(sVisibleInputs(), "");
        EXPECT_FALSE(frm.lblSpecialProcessTextEntryDescription1.Visible());
    }
}

TEST_F(Slots, CoverEveryListedProcess)
{
    std::vector<std::int32_t> aCovered(std::begin(kWithoutTabs), std::end(kWithoutTabs));
    aCovered.push_back(SP_LAUNCH);
    for (const TabOfProcess& objTab : kTabs)
        if (aCovered.back() != objTab.lSpecialProcess)
            aCovered.push_back(objTab.lSpecialProcess);

    std::sort(aCovered.begin(), aCovered.end());
    std::vector<std::int32_t> aListed;
    for (std::int32_t l = 0; l < frm.cbSpecialProcesses.ListCount(); ++l)
        if (frm.cbSpecialProcesses.ItemData(l) != -1)
            aListed.push_back(frm.cbSpecialProcesses.ItemData(l));
    std::sort(aListed.begin(), aListed.end());

    EXPECT_EQ(aCovered, aListed);
    EXPECT_EQ(aListed.size(), 57u);
}

TEST_F(Slots, AreDescribedAsInTheCatalogue)
{
    for (const SpecialProcessRow& objRow : SpecialProcessCatalogue()) {
        if (!objRow.sLabel)
            continue;
        Choose(objRow.lSpecialProcess);
        EXPECT_EQ(frm.lblSpecialProcessDescription.Caption(), objRow.sDescription);
    }
}

TEST_F(Slots, OfferTheChoicesOfTheProcess)
{
    const auto aChoices = [&](std::int32_t lSpecialProcess) {
        Choose(lSpecialProcess);
        std::string sChoices;
        for (std::int32_t l = 0; l < cbList.ListCount(); ++l)
            sChoices += cbList.List(l) + ";";
        return sChoices;
    };
    EXPECT_EQ(aChoices(2), "None;bilinear;bicubic;");
    EXPECT_EQ(aChoices(5), "Horizontal;Vertical;");
    EXPECT_EQ(aChoices(31), "Color;Black & White;");
    EXPECT_EQ(aChoices(45), "Medium;Strong;Weak;");
    EXPECT_EQ(aChoices(46), "Strong;Medium;Weak;");
    EXPECT_EQ(aChoices(47), "Up;Up-Left;Left;Down-Left;Down;Down-Right;Right;Up-Right;");
    EXPECT_EQ(aChoices(53), "Vertical;Horizontal;1st diagonal;2nd diagonal;");
    EXPECT_EQ(aChoices(60), "Even;Odd;");
}

TEST_F(Slots, SpeakTheLanguageOfTheUser)
{
    app.objTranslator.dictTranslations = {
        {"Flips an image either vertically or horizontally.", "Spiegelt ein Bild."},
        {"Flip Direction", "Richtung"},
        {"Specify a flip direction", "In welche Richtung"},
        {"Horizontal", "Waagerecht"}};

    Choose(SP_FLIP);

    EXPECT_EQ(frm.lblSpecialProcessDescription.Caption(), "Spiegelt ein Bild.");
    EXPECT_EQ(tsParameters.TabCaption(1), "Richtung");
    EXPECT_EQ(frm.lblSpecialProcessTextEntryDescription1.Caption(), "In welche Richtung");
    EXPECT_EQ(cbList.List(0), "Waagerecht");
}

TEST_F(Slots, GiveWayToTheFieldsOfALaunch)
{
    Choose(SP_TRANSFORM_RESIZE);
    EXPECT_TRUE(frm.frameSelectFilesForSpecialProcessing.Visible());
    EXPECT_FALSE(frm.frameCommandLine.Visible());

    Choose(SP_LAUNCH);

    EXPECT_TRUE(frm.frameCommandLine.Visible());
    EXPECT_FALSE(frm.frameSelectFilesForSpecialProcessing.Visible());
    EXPECT_FALSE(frm.frameImageViewer.Visible());
    EXPECT_EQ(sVisibleInputs(), "");
    EXPECT_EQ(frm.lblSpecialProcessDescription.Caption(), "Launches a program or batch file.");
}
