// Message boxes and pickers.
// Room: platform/qt.
#pragma once

#include <QWidget>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "src/platform/window_services.h"

// All are modal to their parent, which may be null, and return when they are answered. Closing a box by its
// frame or with Escape gives the answer that changes nothing.

BoxAnswer ShowMessage(QWidget* parent, const std::string& text, const std::string& title, BoxIcon icon,
                      BoxButtons buttons);
/// Returns the index of the button chosen.
std::size_t ShowChoices(QWidget* parent, const std::string& text, const std::string& title, BoxIcon icon,
                        const std::vector<ChoiceButton>& buttons);
std::string PickFilePath(QWidget* parent, FilePicker& picker);
std::string PickFolderPath(QWidget* parent, const std::string& title, const std::string& start_folder);
std::optional<std::int32_t> PickColourValue(QWidget* parent, std::int32_t start);
std::optional<std::string> PickFontName(QWidget* parent, const std::string& start);
