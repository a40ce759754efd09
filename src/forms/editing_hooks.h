// What the editing of tasks needs of the parameter panel, the viewer and the options dialog. Without them, as
// in a run without windows, nothing happens in their place. Room: forms.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

class ImageTransform;
struct Application;
struct ImageBuffer;

/// Makes a preview with the given operations; null if that fails. Owns all it needs, so it may run on any
/// thread.
using MakePreview = std::function<std::shared_ptr<const ImageBuffer>(ImageTransform&)>;
using ShowImage = std::function<void(std::shared_ptr<const ImageBuffer>)>;

struct EditingHooks {
    /// Shows the parameters of the selected process from asSP_Details.
    std::function<void(Application&)> ShowProcessPanel;
    /// Loads the file of view 0 (original) or 1 (target), unless it is on show.
    std::function<void(Application&, std::int32_t lView)> LoadImageViewer;
    /// Loads the files of the chosen tab anew.
    std::function<void(Application&)> tsImageViewer_Click;
    /// Shows zoom, offsets and size of the picture of a view, 0 to 2.
    std::function<void(Application&, std::int32_t lView)> UpdateGUIForImageViewer;
    /// Shows the effect of the selected process on the picture of view 0.
    std::function<void(Application&)> UpdatePreview;
    /// Makes a preview elsewhere and shows it on the window's thread, unless a newer one is wanted by then.
    /// Without it, previews are made and shown at once.
    std::function<void(MakePreview fnMake, ShowImage fnShow)> RunPreview;
    /// Lets the user edit a conversion's options; returns them as they are then.
    std::function<std::string(Application&, const std::string& sOptions)> EditConversionOptions;
};
