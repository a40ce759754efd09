/* Writes good/libuemf-shapes.wmf with libUEMF, an encoder that isn't ours: cc make.c -luemf -lm -o make && ./make good/libuemf-shapes.wmf */
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <uwmf.h>

static WMFTRACK *pTrack;
static WMFHANDLES *pHandles;

static void Put(char *pRecord) { wmf_append((U_METARECORD *)pRecord, pTrack, 1); }

static uint32_t nPen(uint16_t nStyle, uint16_t nWidth, U_COLORREF nColor)
{
    uint32_t nIndex;
    Put(wcreatepenindirect_set(&nIndex, pHandles, U_PEN_set(nStyle, nWidth, nColor)));
    Put(wselectobject_set(nIndex, pHandles));
    return nIndex;
}

static uint32_t nBrush(uint16_t nStyle, U_COLORREF nColor, uint16_t nHatch)
{
    uint32_t nIndex;
    Put(wcreatebrushindirect_set(&nIndex, pHandles, U_WLOGBRUSH_set(nStyle, nColor, nHatch)));
    Put(wselectobject_set(nIndex, pHandles));
    return nIndex;
}

static uint32_t nFont(int16_t iHeight, int16_t iTurn, char *sFace)
{
    uint32_t nIndex;
    U_FONT *pFont = U_FONT_set(iHeight, 0, iTurn, iTurn, 400, 0, 0, 0, 0, 0, 0, 0, 0, sFace);
    Put(wcreatefontindirect_set(&nIndex, pHandles, pFont));
    free(pFont);
    Put(wselectobject_set(nIndex, pHandles));
    return nIndex;
}

int main(int nArguments, char **aArguments)
{
    if (nArguments != 2 || wmf_start(aArguments[1], 100000, 50000, &pTrack) || wmf_htable_create(32, 32, &pHandles))
        return 1;
    /* 3 by 2 inches, 1440 units each: 288 by 192 pixels at 96 an inch. */
    U_PAIRF *pSize = U_PAIRF_set(3, 2);
    wmf_header_append((U_METARECORD *)U_WMRHEADER_set(pSize, 1440), pTrack, 1);
    free(pSize);
    Put(U_WMRSETMAPMODE_set(8));
    Put(U_WMRSETWINDOWORG_set(point16_set(0, 0)));
    Put(U_WMRSETWINDOWEXT_set(point16_set(4320, 2880)));
    Put(U_WMRSETBKMODE_set(1));

    nPen(0, 45, U_RGB(0, 0, 200));
    nBrush(0, U_RGB(255, 240, 160), 0);
    Put(U_WMRRECTANGLE_set(U_RECT16_set(point16_set(150, 150), point16_set(1350, 900))));
    nBrush(2, U_RGB(200, 0, 0), 5);
    Put(U_WMRELLIPSE_set(U_RECT16_set(point16_set(1500, 150), point16_set(2700, 900))));
    nBrush(0, U_RGB(0, 160, 0), 0);
    U_POINT16 aTriangle[3] = {{2850, 900}, {3450, 150}, {4050, 900}};
    Put(U_WMRPOLYGON_set(3, aTriangle));
    Put(U_WMRPIE_set(point16_set(750, 1050), point16_set(1350, 1425),
                     U_RECT16_set(point16_set(150, 1050), point16_set(1350, 1800))));
    Put(U_WMRROUNDRECT_set(300, 300, U_RECT16_set(point16_set(1500, 1050), point16_set(2700, 1800))));
    nPen(1, 0, U_RGB(0, 0, 0));
    U_POINT16 aZigzag[4] = {{2850, 1800}, {3250, 1050}, {3650, 1800}, {4050, 1050}};
    Put(U_WMRPOLYLINE_set(4, aZigzag));

    nFont(-360, 0, "Arial");
    Put(U_WMRSETTEXTCOLOR_set(U_RGB(160, 0, 160)));
    Put(U_WMRTEXTOUT_set(point16_set(150, 1900), "Arial text"));
    nFont(-300, 200, "Times New Roman");
    Put(U_WMRTEXTOUT_set(point16_set(2200, 2400), "Turned text"));

    Put(U_WMREOF_set());
    wmf_finish(pTrack);
    wmf_free(&pTrack);
    wmf_htable_free(&pHandles);
    return 0;
}
