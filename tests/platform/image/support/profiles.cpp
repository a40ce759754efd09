// Makes colour profiles with Little CMS.
#include "tests/platform/image/support/profiles.h"

#include <lcms2.h>

#include <algorithm>
#include <array>
#include <cstddef>

static std::vector<std::uint8_t> aSaved(cmsHPROFILE pProfile)
{
    cmsUInt32Number nSize = 0;
    cmsSaveProfileToMem(pProfile, nullptr, &nSize);
    std::vector<std::uint8_t> aProfile(nSize);
    cmsSaveProfileToMem(pProfile, aProfile.data(), &nSize);
    cmsCloseProfile(pProfile);
    return aProfile;
}

std::vector<std::uint8_t> aSrgbProfile()
{
    return aSaved(cmsCreate_sRGBProfile());
}

std::vector<std::uint8_t> aSwappedProfile()
{
    const cmsCIExyY objWhite = {0.3127, 0.3290, 1};
    const cmsCIExyYTRIPLE objPrimaries = {{0.30, 0.60, 1}, {0.64, 0.33, 1}, {0.15, 0.06, 1}};
    const std::array<cmsFloat64Number, 5> aSrgbCurve = {2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045};
    cmsToneCurve* pCurve = cmsBuildParametricToneCurve(nullptr, 4, aSrgbCurve.data());
    cmsToneCurve* aCurves[3] = {pCurve, pCurve, pCurve};
    const cmsHPROFILE pProfile = cmsCreateRGBProfile(&objWhite, &objPrimaries, aCurves);
    cmsFreeToneCurve(pCurve);
    return aSaved(pProfile);
}

std::vector<std::uint8_t> aGreyProfile(double dGamma)
{
    cmsToneCurve* pCurve = cmsBuildGamma(nullptr, dGamma);
    const cmsHPROFILE pProfile = cmsCreateGrayProfile(cmsD50_xyY(), pCurve);
    cmsFreeToneCurve(pCurve);
    return aSaved(pProfile);
}

// Fills one node of the profile's table: inks to Lab by way of sRGB.
static cmsInt32Number SampleInks(const cmsUInt16Number aIn[], cmsUInt16Number aOut[], void* pToLab)
{
    std::array<cmsUInt16Number, 3> aRgb{};
    const std::array<std::size_t, 3> aInkOfColour = {2, 1, 0};  // red is taken by yellow, blue by cyan
    for (std::size_t i = 0; i < 3; ++i)
        aRgb[i] = static_cast<cmsUInt16Number>((65535u - aIn[aInkOfColour[i]]) * (65535u - aIn[3]) / 65535u);
    cmsDoTransform(pToLab, aRgb.data(), aOut, 1);
    return 1;
}

std::vector<std::uint8_t> aCmykProfile()
{
    const cmsHPROFILE pSrgb = cmsCreate_sRGBProfile();
    const cmsHPROFILE pLab = cmsCreateLab4Profile(nullptr);
    const cmsHTRANSFORM pToLab =
        cmsCreateTransform(pSrgb, TYPE_RGB_16, pLab, TYPE_Lab_16, INTENT_PERCEPTUAL, 0);
    cmsCloseProfile(pSrgb);
    cmsCloseProfile(pLab);

    const cmsHPROFILE pProfile = cmsCreateProfilePlaceholder(nullptr);
    cmsSetProfileVersion(pProfile, 4.3);
    cmsSetDeviceClass(pProfile, cmsSigOutputClass);
    cmsSetColorSpace(pProfile, cmsSigCmykData);
    cmsSetPCS(pProfile, cmsSigLabData);
    cmsPipeline* pPipeline = cmsPipelineAlloc(nullptr, 4, 3);
    cmsStage* pTable = cmsStageAllocCLut16bit(nullptr, 7, 4, 3, nullptr);
    cmsStageSampleCLut16bit(pTable, SampleInks, pToLab, 0);
    cmsPipelineInsertStage(pPipeline, cmsAT_BEGIN, cmsStageAllocToneCurves(nullptr, 4, nullptr));
    cmsPipelineInsertStage(pPipeline, cmsAT_END, pTable);
    cmsPipelineInsertStage(pPipeline, cmsAT_END, cmsStageAllocToneCurves(nullptr, 3, nullptr));
    cmsWriteTag(pProfile, cmsSigAToB0Tag, pPipeline);
    cmsPipelineFree(pPipeline);
    cmsDeleteTransform(pToLab);
    return aSaved(pProfile);
}
