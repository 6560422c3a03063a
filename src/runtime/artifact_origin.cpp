#include "runtime/artifact_origin.h"

#include <glib.h>
#include <memory>

namespace kelmo {

std::string pathDigest(const std::filesystem::path& file) {
    const std::string path = file.lexically_normal().string();
    std::unique_ptr<gchar, decltype(&g_free)> digest{
        g_compute_checksum_for_string(G_CHECKSUM_SHA256, path.c_str(),
                                      static_cast<gssize>(path.size())),
        g_free};
    return digest.get();
}

// 128 bits of the digest: a host label well under DNS's 63 characters.
std::string originHostFor(const std::filesystem::path& artifactFile) {
    return pathDigest(artifactFile).substr(0, 32) + "." + std::string{artifactSite};
}

} // namespace kelmo
