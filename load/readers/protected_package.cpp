#include "load/readers/protected_package.h"

#include "load/readers/container/decrypt.h"
#include "load/readers/container/package.h"
#include "load/readers/opendocument/open_cipher.h"
#include "load/readers/opendocument/open_package.h"

namespace zorvane {

ReadEnd OpenProtected(std::string_view bytes, std::string_view password, std::string& plain) {
    if (IsEncryptedPackage(bytes))
        return DecryptPackage(bytes, password, plain);
    const std::unique_ptr<Package> package = Package::Open(bytes);
    if (package == nullptr || !IsEncryptedOpenDocument(*package))
        return ReadEnd::Ok();
    return DecipherOpenDocument(*package, password, plain);
}

}  // namespace zorvane
