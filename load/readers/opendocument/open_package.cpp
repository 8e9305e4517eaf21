#include "load/readers/opendocument/open_package.h"

namespace zorvane {

bool IsEncryptedOpenDocument(Package& package) {
    const std::optional<std::string> manifest = package.Read("META-INF/manifest.xml");
    return manifest && manifest->find("encryption-data") != std::string::npos;
}

}  // namespace zorvane
