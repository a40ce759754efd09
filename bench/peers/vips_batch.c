/* Converts files with libvips in one process, as a user's program would.
   Usage: vips_batch OPERATION FOLDER SUFFIX[options] FILE ... */
#include <stdlib.h>
#include <string.h>
#include <vips/vips.h>

static int Operate(const char* sOperation, VipsImage* pIn, VipsImage** ppOut)
{
    if (!strcmp(sOperation, "resize"))
        return vips_resize(pIn, ppOut, 1280.0 / pIn->Xsize, "kernel", VIPS_KERNEL_CUBIC, NULL);
    if (!strcmp(sOperation, "blur"))
        return vips_gaussblur(pIn, ppOut, 5.0, NULL);
    if (!strcmp(sOperation, "rotate")) {
        double aWhite[] = {255, 255, 255};
        VipsArrayDouble* pWhite = vips_array_double_new(aWhite, pIn->Bands);
        return vips_similarity(pIn, ppOut, "angle", 30.0, "background", pWhite, "interpolate",
                               vips_interpolate_new("bilinear"), NULL);
    }
    if (!strcmp(sOperation, "hue")) {
        VipsImage *pLch, *pTurned;
        double aScale[] = {1, 1.3, 1}, aOffset[] = {0, 0, 20};
        if (vips_colourspace(pIn, &pLch, VIPS_INTERPRETATION_LCH, NULL) ||
            vips_linear(pLch, &pTurned, aScale, aOffset, 3, NULL))
            return -1;
        pTurned->Type = VIPS_INTERPRETATION_LCH;
        return vips_colourspace(pTurned, ppOut, VIPS_INTERPRETATION_sRGB, NULL);
    }
    if (!strcmp(sOperation, "equalize"))
        return vips_hist_equal(pIn, ppOut, NULL);
    if (!strcmp(sOperation, "sobel"))
        return vips_sobel(pIn, ppOut, NULL);
    if (!strcmp(sOperation, "sobel1")) {
        VipsImage* pKernel = vips_image_new_matrixv(3, 3, -1., 0., 1., -2., 0., 2., -1., 0., 1.);
        VipsImage *pRaw, *pAmount;
        return vips_conv(pIn, &pRaw, pKernel, "precision", VIPS_PRECISION_INTEGER, NULL) ||
               vips_abs(pRaw, &pAmount, NULL) || vips_cast(pAmount, ppOut, VIPS_FORMAT_UCHAR, NULL);
    }
    if (!strcmp(sOperation, "min5"))
        return vips_rank(pIn, ppOut, 5, 5, 0, NULL);
    if (!strcmp(sOperation, "emboss")) {
        VipsImage* pKernel = vips_image_new_matrixv(3, 3, -1., 0., 0., 0., 1., 0., 0., 0., 0.);
        VipsImage* pRaw;
        vips_image_set_double(pKernel, "offset", 128);
        return vips_conv(pIn, &pRaw, pKernel, "precision", VIPS_PRECISION_INTEGER, NULL) ||
               vips_cast(pRaw, ppOut, VIPS_FORMAT_UCHAR, NULL);
    }
    return vips_copy(pIn, ppOut, NULL);
}

static void Convert(const char* sOperation, VipsImage* pIn, const char* sTarget)
{
    VipsImage* pOut = NULL;
    if (!pIn || Operate(sOperation, pIn, &pOut) || vips_image_write_to_file(pOut, sTarget, NULL)) {
        fprintf(stderr, "%s: %s\n", sTarget, vips_error_buffer());
        vips_error_clear();
    }
    if (pOut)
        g_object_unref(pOut);
    if (pIn)
        g_object_unref(pIn);
}

int main(int nArguments, char** aArguments)
{
    if (nArguments < 5 || VIPS_INIT(aArguments[0]))
        return 1;
    vips_cache_set_max(0);
    const char* sOperation = aArguments[1];
    char sSuffix[64], sOptions[128] = "";
    snprintf(sSuffix, sizeof sSuffix, "%s", aArguments[3]);
    char* pBracket = strchr(sSuffix, '[');
    if (pBracket) {
        snprintf(sOptions, sizeof sOptions, "%s", pBracket);
        *pBracket = 0;
    }
    const int bPages = !strcmp(sOperation, "pages");
    const int bRandom = !strcmp(sOperation, "rotate") || !strcmp(sOperation, "equalize");
    for (int i = 4; i < nArguments; ++i) {
        char* sBase = g_path_get_basename(aArguments[i]);
        *strrchr(sBase, '.') = 0;
        char sTarget[1024];
        int nPages = 0;
        if (bPages) {
            VipsImage* pFile = vips_image_new_from_file(aArguments[i], NULL);
            nPages = pFile ? vips_image_get_n_pages(pFile) : 0;
            if (pFile)
                g_object_unref(pFile);
        }
        for (int n = 0; n < nPages; ++n) {
            snprintf(sTarget, sizeof sTarget, "%s/%s-%d%s%s", aArguments[2], sBase, n + 1, sSuffix, sOptions);
            Convert("none", vips_image_new_from_file(aArguments[i], "page", n, NULL), sTarget);
        }
        if (!bPages) {
            snprintf(sTarget, sizeof sTarget, "%s/%s%s%s", aArguments[2], sBase, sSuffix, sOptions);
            const VipsAccess eAccess = bRandom ? VIPS_ACCESS_RANDOM : VIPS_ACCESS_SEQUENTIAL;
            Convert(sOperation, vips_image_new_from_file(aArguments[i], "access", eAccess, NULL), sTarget);
        }
        g_free(sBase);
    }
    vips_shutdown();
    return 0;
}
