#pragma once

#include "MacToolbox/Data/HostDisk.h"

namespace MacToolbox {

/// A replacement in progress; see `HostFiles::Replacement`. Inactive, it names no file.
class Replacing {
public:
    void begin(const std::string& path);
    void end(); ///< drops what is new and was not put in place

    bool active() const { return active_; }
    bool isTarget(const std::string& path) const { return active_ && path == target_; }
    /// The new file, if it stands for the target.
    bool made() const { return made_; }
    const std::string& fresh() const { return fresh_; }
    /// The target counts as missing, and nothing stands for it.
    bool missing() const { return deleted_ && !made_; }

    /// Makes the new file, empty. It is locked, so that no other process takes it for a leftover.
    bool makeFresh();
    void dropFresh();
    /// Makes the new file a copy of the old one, so that it can be changed there. If it cannot, nothing is made.
    void copyToFresh();
    /// From now on the target counts as missing; what was new is dropped.
    void markDeleted();
    /// Puts the new file in the place of the old one.
    bool putInPlace();

    /// Removes what killed replacements left in a folder; one that another process is at is left alone.
    static void sweep(const std::string& folder);

private:
    bool active_ = false;
    std::string target_; // the file to be replaced, as the game names it
    std::string place_;  // where the new file goes: the target, or what a link there leads to if it is only changed
    std::string fresh_;  // the new file, beside `place_`
    bool deleted_ = false;
    bool made_ = false;
    HostFile held_; // the new file, locked
};

} // namespace MacToolbox
