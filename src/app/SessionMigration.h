#pragma once

namespace daylark {

class Library;

/// Gives every playlist of an older session its type (and its shown count), after every load. Interface
/// thread.
void updatePlaylistsWithNewVariables(Library& library);

} // namespace daylark
