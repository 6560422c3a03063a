#include "library/artifact_item.h"

namespace kelmo {

ArtifactItem::ArtifactItem(const Artifact& artifact) : artifact_{artifact} {}

Glib::RefPtr<ArtifactItem> ArtifactItem::create(const Artifact& artifact) {
    return Glib::make_refptr_for_instance<ArtifactItem>(new ArtifactItem(artifact));
}

} // namespace kelmo
