// What follows when a person changes the source, the target or a type.
// Room: editing.
#pragma once

struct Application;
struct FileFields;

/// The form differs from its row from now on; the commands follow.
void MarkDirty(Application& app);

/// With a "*" in the source the two check boxes for folders can be ticked and a single target can't be
/// picked; without one it is the other way round.
void RefreshFileFolder(const FileFields& objFields);

/// A new source: its extension selects the type, quotes go, and a target is proposed. Like the handlers below
/// it does nothing while bInternalGridChange is set.
void OriginalFile_Change(Application& app, const FileFields& objFields);

/// A new target: its extension selects the type, and quotes go.
void TargetFile_Change(Application& app, const FileFields& objFields);

void FileTypeOriginal_Click(Application& app, const FileFields& objFields);

/// Another target type renews the extension of a target that is still the untouched proposal.
void FileTypeTarget_Click(Application& app, const FileFields& objFields);

void DoSubfolders_Click(Application& app);

/// The target can't be edited while each file is saved beside its source.
void SaveToOriginalFolder_Click(Application& app, const FileFields& objFields);
