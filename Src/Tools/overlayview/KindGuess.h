#pragma once

#include "Tools/overlayview/Container.h"
#include "Tools/overlayview/Kind.h"
#include "Tools/overlayview/Request.h"

namespace overlayview {

/// Finds out what a body holds: characters when the request tells how they lie; runs when every word is one
/// as a writer makes them, up to an end word; a pattern when its bytes make a known size or whole rows of the
/// width in the request; runs again when only their end is missing. Otherwise unknown.
Kind guessKind(const Container& container, const Request& request);

}  // namespace overlayview
