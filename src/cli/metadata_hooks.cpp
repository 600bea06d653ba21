#include "cli/metadata_hooks.h"

#include "containers/eps.h"
#include "containers/rmeta.h"
#include "iptc/iptc_read.h"
#include "iptc/iptc_store.h"

namespace tagmend {
namespace {

void empty_iptc_store(ReadContext& context) { reset_iptc_store(context.iptc); }

constexpr MetadataHooks hooks = {
    .reset_iptc = empty_iptc_store,
    .read_app13 = read_app13,
    .read_iptc_value = read_iptc_value,
    .read_photoshop_value = read_photoshop_value,
    .read_rmeta = read_rmeta,
    .read_eps = read_eps_photoshop,
};

}  // namespace

const MetadataHooks& metadata_hooks() { return hooks; }

}  // namespace tagmend
