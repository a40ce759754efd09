// Shaders of EMF+ gradient and texture brushes.
// Room: platform/image/metafile/emfplus.
#pragma once

#include <memory>

#include "src/platform/image/metafile/emfplus/objects.h"

/// to_picture maps the brush's units, after its own transform, to pixels. Null if the brush is degenerate.
std::shared_ptr<const Shader> MakeLinearShader(const PlusLinearBrush& brush, const Affine& to_picture);
std::shared_ptr<const Shader> MakePathShader(const PlusPathBrush& brush, const Affine& to_picture);
std::shared_ptr<const Shader> MakeTextureShader(const PlusTextureBrush& brush, const Affine& to_picture);

/// The cost of making a gradient's shader in budget units.
std::uint64_t GradientWork(const GradientRun& run, const std::vector<Point>& boundary, Point center);
