// Affine maps.
#include "src/platform/image/metafile/canvas/geometry.h"

Affine Affine::Inverse() const
{
    const double dDeterminant = Determinant();
    if (!std::isfinite(1 / dDeterminant))
        return {};
    Affine objResult{yy / dDeterminant, -yx / dDeterminant, -xy / dDeterminant, xx / dDeterminant, 0, 0};
    const Point ptMoved = objResult.ApplyToVector({x0, y0});
    objResult.x0 = -ptMoved.x;
    objResult.y0 = -ptMoved.y;
    return objResult;
}

Affine Then(const Affine& objFirst, const Affine& objSecond)
{
    const Point ptX = objSecond.ApplyToVector({objFirst.xx, objFirst.yx});
    const Point ptY = objSecond.ApplyToVector({objFirst.xy, objFirst.yy});
    const Point ptMoved = objSecond.Apply({objFirst.x0, objFirst.y0});
    return {ptX.x, ptX.y, ptY.x, ptY.y, ptMoved.x, ptMoved.y};
}

Rect RectAround(const Affine& objMap, const Rect& rc)
{
    const Point ptA = ptTamed(objMap.Apply({rc.dLeft, rc.dTop}));
    const Point ptB = ptTamed(objMap.Apply({rc.dRight, rc.dTop}));
    const Point ptC = ptTamed(objMap.Apply({rc.dRight, rc.dBottom}));
    const Point ptD = ptTamed(objMap.Apply({rc.dLeft, rc.dBottom}));
    return {std::min({ptA.x, ptB.x, ptC.x, ptD.x}), std::min({ptA.y, ptB.y, ptC.y, ptD.y}),
            std::max({ptA.x, ptB.x, ptC.x, ptD.x}), std::max({ptA.y, ptB.y, ptC.y, ptD.y})};
}
