// The fields of a task: conversion, special process, launch.
// Room: platform/qt/forms.
#pragma once

#include "src/platform/qt/forms/layout.h"

/// frameCF.
QWidget* MakeConversionFields(const Translate& translate);
/// frameSpecializedAction.
QWidget* MakeProcessFields(const Translate& translate);
