// The desktop's trash, by the freedesktop.org Trash specification 1.0.
// Room: platform/posix.
#pragma once

#include <string>

/// Files go to the trash of their own file system, because only a rename can neither fail half way nor lose a
/// file: to the user's home trash if that is on the same mount, otherwise to .Trash/UID or .Trash-UID at the
/// top of the file's mount. A trash folder that is a link or belongs to another user isn't used, and neither
/// is a shared .Trash without a sticky bit.
class Trash
{
public:
    /// `home_trash` is a host path: by default $XDG_DATA_HOME/Trash or ~/.local/share/Trash, "" if the user
    /// has no home.
    explicit Trash(std::string home_trash = HomeTrash()) : home_trash_(std::move(home_trash)) {}

    /// Moves a file, or a link as such, to the trash, together with a note of where it was. False, with the
    /// file still in its place, if no trash can take it.
    [[nodiscard]] bool Take(const std::string& host_path) const;

    static std::string HomeTrash();

private:
    std::string home_trash_;
};
