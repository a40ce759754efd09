// Splitting and joining the options of a conversion.
#include "src/conversion/modConversionDetails.h"

#include <gtest/gtest.h>

#include "tests/fakes/test_application.h"

TEST(SplitImageConversionOptions, ParsesAllElevenFields)
{
    TestApplication app;

    const ConversionDetails objDetails =
        SplitImageConversionOptions(app, "2,4^3^TRUE^60^title^description^date^author^copyright^model^type");

    EXPECT_EQ(objDetails.sPagesToDo, "2,4");
    EXPECT_EQ(app.frmMain.lTIFFCompression, 3);
    EXPECT_TRUE(objDetails.bAppendToTiff);
    EXPECT_EQ(app.frmMain.lJPEGQuality, 60);
    EXPECT_EQ(objDetails.objTexts.sTitle, "title");
    EXPECT_EQ(objDetails.objTexts.sDescription, "description");
    EXPECT_EQ(objDetails.objTexts.sDateTime, "date");
    EXPECT_EQ(objDetails.objTexts.sAuthor, "author");
    EXPECT_EQ(objDetails.objTexts.sCopyright, "copyright");
    EXPECT_EQ(objDetails.objTexts.sEquipmentModel, "model");
    EXPECT_EQ(objDetails.objTexts.sEquipmentType, "type");
}

TEST(SplitImageConversionOptions, ReturnsDefaultsForFewerThanTwoFields)
{
    TestApplication app;

    const ConversionDetails objDetails = SplitImageConversionOptions(app, "1");

    EXPECT_EQ(objDetails.sPagesToDo, "");
    EXPECT_FALSE(objDetails.bAppendToTiff);
    EXPECT_EQ(objDetails.objTexts.sTitle, "");
    EXPECT_EQ(app.frmMain.lTIFFCompression, 0);
    EXPECT_EQ(app.frmMain.lJPEGQuality, 75);
}

TEST(SplitImageConversionOptions, KeepsTheValuesOfMalformedFields)
{
    TestApplication app;
    SplitImageConversionOptions(app, "*^4^TRUE^60");

    const ConversionDetails objDetails = SplitImageConversionOptions(app, "*^lzw^perhaps^99999999999");

    EXPECT_EQ(app.frmMain.lTIFFCompression, 4);
    EXPECT_FALSE(objDetails.bAppendToTiff);
    EXPECT_EQ(app.frmMain.lJPEGQuality, 60);
}

TEST(SplitImageConversionOptions, ReadsANonNumericQualityAsHundred)
{
    TestApplication app;

    SplitImageConversionOptions(app, "*^0^^best");
    EXPECT_EQ(app.frmMain.lJPEGQuality, 100);

    app.frmMain.lJPEGQuality = 50;
    SplitImageConversionOptions(app, "*^0^FALSE^");
    EXPECT_EQ(app.frmMain.lJPEGQuality, 100);
}

TEST(SplitImageConversionOptions, ReadsAnEmptyAppendFieldAsFalse)
{
    TestApplication app;

    EXPECT_FALSE(SplitImageConversionOptions(app, "*^0^^75").bAppendToTiff);
    EXPECT_TRUE(SplitImageConversionOptions(app, "*^0^true^75").bAppendToTiff);
    EXPECT_TRUE(SplitImageConversionOptions(app, "*^0^-1^75").bAppendToTiff);
}

TEST(SplitImageConversionOptions, ReadsTwoEmptyFieldsFromACaretAlone)
{
    ConversionDetails objDetails;

    SplitImageConversionOptions("^", '.', objDetails);

    EXPECT_EQ(objDetails.sPagesToDo, "");
    EXPECT_EQ(objDetails.lCompression, 0);
    EXPECT_FALSE(objDetails.bAppendToTiff);
    EXPECT_EQ(objDetails.lQuality, 100);
}

TEST(SplitImageConversionOptions, FillsWhatAShortTextHolds)
{
    ConversionDetails objDetails;
    objDetails.objTexts.sAuthor = "kept";

    SplitImageConversionOptions("2^4^TRUE^60^title", '.', objDetails);

    EXPECT_EQ(objDetails.lCompression, 4);
    EXPECT_TRUE(objDetails.bAppendToTiff);
    EXPECT_EQ(objDetails.lQuality, 60);
    EXPECT_EQ(objDetails.objTexts.sTitle, "title");
    EXPECT_EQ(objDetails.objTexts.sAuthor, "kept");
}

TEST(SplitImageConversionOptions, AssignsNothingWithoutACaret)
{
    ConversionDetails objDetails;
    objDetails.sPagesToDo = "kept";
    objDetails.lQuality = 33;

    SplitImageConversionOptions("", '.', objDetails);
    SplitImageConversionOptions("5", '.', objDetails);

    EXPECT_EQ(objDetails.sPagesToDo, "kept");
    EXPECT_EQ(objDetails.lQuality, 33);
}

TEST(JoinImageConversionOptions, WritesElevenFieldsEachWithItsCaret)
{
    ConversionDetails objDetails;
    objDetails.sPagesToDo = "1-3";
    objDetails.lCompression = 5;
    objDetails.lQuality = 80;
    objDetails.objTexts = {"title", "description", "date", "author", "copyright", "type", "model"};

    EXPECT_EQ(sJoinImageConversionOptions(objDetails),
              "1-3^5^FALSE^80^title^description^date^author^copyright^model^type^");
}

TEST(JoinImageConversionOptions, GivesBackTheTextThatWasSplit)
{
    const std::string sOptions =
        "1^0^FALSE^75^'Varnel'^A batch picture tool^1/1/2007^Orbelan, Inc.^Orbelan 2006^^^";
    ConversionDetails objDetails;

    SplitImageConversionOptions(sOptions, '.', objDetails);

    EXPECT_EQ(sJoinImageConversionOptions(objDetails), sOptions);
}
