// The search for the first frame of a file that begins with something else.
#pragma once

#include "model/document.h"

namespace corvelin {

/// The first frame of a document that is one part over its whole file, searched from `from` in
/// steps of 20 bytes with `locate_frame`, at most to the end of the file's first mebibyte.
/// `no_position` if none.
///
/// Leaves `stream.current_frame` as the searches would one by one, but looks at each byte of the
/// junk only once or twice.
EditPosition find_first_frame(EditPosition from);

}  // namespace corvelin
