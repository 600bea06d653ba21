// Values that tell where in the file something lies that the reader does not know, so that nothing
// moves it with the rest, or keeps it where it is.
#pragma once

#include "read/ifd_chain.h"

namespace tagmend {

/// Whether the value of an entry, which stands on its value field and is within reach, leads to
/// such data: it may be gone once the file has been written anew.
bool leads_to_unmoved_data(IfdChain& chain, const StoredEntry& entry);

}  // namespace tagmend
