#pragma once

#include "model/artifact.h"

#include <glibmm/object.h>
#include <glibmm/refptr.h>

namespace kelmo {

// One artifact as an item of the library's list model. Artifact records never
// change in place, so an item keeps its record for life; a changed file arrives
// as a new record with a new id and therefore as a new item.
class ArtifactItem : public Glib::Object {
public:
    static Glib::RefPtr<ArtifactItem> create(const Artifact& artifact);

    const Artifact& artifact() const { return artifact_; }

protected:
    explicit ArtifactItem(const Artifact& artifact);

private:
    Artifact artifact_;
};

} // namespace kelmo
