#pragma once

#include "MacToolbox/Base/Memory.h"

// Playing `PICT` resources, versions 1 and 2, into the current port. Game thread only.

namespace MacToolbox {

/// The resource `PICT` `id`, or nil.
Handle GetPicture(Int id);
inline void KillPicture(const Handle&) { }
/// The picture's own rectangle; all zeros for nil or a block too short.
Rect picFrame(const Handle& picture);
/// Plays the picture into `thePort` so that its frame falls on `dstRect`; what is damaged ends it. The port's settings
/// are put back afterwards.
void DrawPicture(const Handle& picture, const Rect& dstRect);

} // namespace MacToolbox
