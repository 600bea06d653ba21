#include "support/settings.h"

namespace tagmend {

constinit LibrarySettings library_settings;

}  // namespace tagmend
