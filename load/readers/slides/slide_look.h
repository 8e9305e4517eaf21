// How text on a slide looks, whichever format tells it.
#pragma once

#include "compare/document/rich_text.h"

namespace zorvane {

/// Before anything is told of it: 18 points.
CharFormat PlainSlideFormat();
/// Sets the colour of text unless a white page would swallow it or it is black: the background of a
/// slide does not come along, and black is the reader's own colour.
void SetVisibleColor(Color color, CharFormat& format);

}  // namespace zorvane
