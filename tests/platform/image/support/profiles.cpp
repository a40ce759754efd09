// Makes colour profiles with Little CMS.
#include "tests/platform/image/support/profiles.h"

#include <lcms2.h>

#include <algorithm>
#include <array>
#include <cstddef>

static std::vector<std::uint8_t> Serialise(cmsHPROFILE profile)
{
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile, nullptr, &size);
    std::vector<std::uint8_t> bytes(size);
    cmsSaveProfileToMem(profile, bytes.data(), &size);
    cmsCloseProfile(profile);
    return bytes;
}

std::vector<std::uint8_t> SrgbProfile()
{
    return Serialise(cmsCreate_sRGBProfile());
}

std::vector<std::uint8_t> SwappedProfile()
{
    const cmsCIExyY white = {0.3127, 0.3290, 1};
    const cmsCIExyYTRIPLE primaries = {{0.30, 0.60, 1}, {0.64, 0.33, 1}, {0.15, 0.06, 1}};
    const std::array<cmsFloat64Number, 5> srgb_curve = {2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045};
    cmsToneCurve* curve = cmsBuildParametricToneCurve(nullptr, 4, srgb_curve.data());
    cmsToneCurve* curves[3] = {curve, curve, curve};
    const cmsHPROFILE profile = cmsCreateRGBProfile(&white, &primaries, curves);
    cmsFreeToneCurve(curve);
    return Serialise(profile);
}

std::vector<std::uint8_t> GreyProfile(double gamma)
{
    cmsToneCurve* curve = cmsBuildGamma(nullptr, gamma);
    const cmsHPROFILE profile = cmsCreateGrayProfile(cmsD50_xyY(), curve);
    cmsFreeToneCurve(curve);
    return Serialise(profile);
}

// Fills a node of the CLUT, converting inks to Lab through sRGB.
static cmsInt32Number SampleInks(const cmsUInt16Number in[], cmsUInt16Number out[], void* to_lab)
{
    std::array<cmsUInt16Number, 3> rgb{};
    const std::array<std::size_t, 3> ink_of_colour = {2, 1, 0};  // red is absorbed by yellow, blue by cyan
    for (std::size_t i = 0; i < 3; ++i)
        rgb[i] = static_cast<cmsUInt16Number>((65535u - in[ink_of_colour[i]]) * (65535u - in[3]) / 65535u);
    cmsDoTransform(to_lab, rgb.data(), out, 1);
    return 1;
}

std::vector<std::uint8_t> CmykProfile()
{
    const cmsHPROFILE srgb = cmsCreate_sRGBProfile();
    const cmsHPROFILE lab = cmsCreateLab4Profile(nullptr);
    const cmsHTRANSFORM to_lab =
        cmsCreateTransform(srgb, TYPE_RGB_16, lab, TYPE_Lab_16, INTENT_PERCEPTUAL, 0);
    cmsCloseProfile(srgb);
    cmsCloseProfile(lab);

    const cmsHPROFILE profile = cmsCreateProfilePlaceholder(nullptr);
    cmsSetProfileVersion(profile, 4.3);
    cmsSetDeviceClass(profile, cmsSigOutputClass);
    cmsSetColorSpace(profile, cmsSigCmykData);
    cmsSetPCS(profile, cmsSigLabData);
    cmsPipeline* pipeline = cmsPipelineAlloc(nullptr, 4, 3);
    cmsStage* table = cmsStageAllocCLut16bit(nullptr, 7, 4, 3, nullptr);
    cmsStageSampleCLut16bit(table, SampleInks, to_lab, 0);
    cmsPipelineInsertStage(pipeline, cmsAT_BEGIN, cmsStageAllocToneCurves(nullptr, 4, nullptr));
    cmsPipelineInsertStage(pipeline, cmsAT_END, table);
    cmsPipelineInsertStage(pipeline, cmsAT_END, cmsStageAllocToneCurves(nullptr, 3, nullptr));
    cmsWriteTag(profile, cmsSigAToB0Tag, pipeline);
    cmsPipelineFree(pipeline);
    cmsDeleteTransform(to_lab);
    return Serialise(profile);
}
