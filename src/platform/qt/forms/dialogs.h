// The dialogs and the start banner.
// Room: platform/qt/forms.
#pragma once

#include <QWidget>
#include <memory>

#include "src/platform/qt/forms/layout.h"

// Each makes the empty window of the form of that name; parent may be null.
std::unique_ptr<QWidget> MakeAbout(QWidget* parent, const Translate& translate);
std::unique_ptr<QWidget> MakePleaseWait(QWidget* parent, const Translate& translate);
std::unique_ptr<QWidget> MakeTypeMatchNotification(QWidget* parent, const Translate& translate);
std::unique_ptr<QWidget> MakeOptions(QWidget* parent, const Translate& translate);
std::unique_ptr<QWidget> MakeConversionOptions(QWidget* parent, const Translate& translate);
std::unique_ptr<QWidget> MakeImageViewer(QWidget* parent, const Translate& translate);
std::unique_ptr<QWidget> MakeLanguage(QWidget* parent, const Translate& translate);
std::unique_ptr<QWidget> MakeScheduler(QWidget* parent, const Translate& translate);
