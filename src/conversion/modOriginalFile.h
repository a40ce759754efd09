// What becomes of the source of an item that has been converted.
// Room: conversion.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "src/platform/file_system.h"

struct Application;
struct clsConversionOptions;

/// The files of one item.
struct ItemFiles {
    std::optional<FileStamp> objOriginal;  ///< the source before it was read; nothing if there was none
    std::vector<std::string> aTargets;     ///< saved, in order
};

/// How much an item may do to its source.
enum class OriginalRule {
    MayBeDeleted,
    OnlyToTrash,  ///< its picture may not survive, or it isn't in the folder that the user named
};

/// Removes the source from its place without ever losing it: deletes it only if the item succeeded, all its
/// targets are on the disk and the source is still the file that was read. In any other case it moves to the
/// trash, and where no trash can take it, it stays and the report says so. A source that is one of the
/// targets, by whatever path, stays.
///
/// False if the system reports that a target isn't on the disk: the source then stays, and lErr and sErr are
/// -103 "Unable to convert".
bool bDisposeOfOriginal(Application& app, clsConversionOptions& objOptions, const ItemFiles& objFiles,
                        OriginalRule eRule);
