#include "load/contract_codes.h"

#include <cstddef>
#include <iterator>

namespace zorvane {
namespace {

using Word = WordResult;
using Easy = EasyError;
using Port = PortError;

// In the order of the errors' numbers.
constexpr ContractCodes kCodes[] = {
    {ReadError::None, Word::Ok, Easy::None, Port::None},
    {ReadError::CannotOpen, Word::SourceInvalid, Easy::CannotOpenInput, Port::CannotOpen},
    {ReadError::WrongFormat, Word::SourceInvalid, Easy::CannotOpenInput, Port::CannotOpen},
    {ReadError::Damaged, Word::Other, Easy::CannotOpenInput, Port::Damaged},
    {ReadError::PasswordNeeded, Word::Protected, Easy::NoPermission, Port::PasswordNeeded},
    {ReadError::Unsupported, Word::Other, Easy::NoPermission, Port::NoPermission},
    {ReadError::NeedsOffice, Word::NotInstalled, Easy::Conversion, Port::CannotOpen},
    {ReadError::TooLarge, Word::Other, Easy::OutOfMemory, Port::Damaged},
    {ReadError::Cancelled, Word::Other, Easy::Stopped, Port::CannotOpen},
    {ReadError::CannotWrite, Word::Other, Easy::CannotCreateOutput, Port::CannotOpen},
    {ReadError::NotStarted, Word::Other, Easy::NoLibrary, Port::CannotOpen},
    {ReadError::Crashed, Word::Other, Easy::Internal, Port::Damaged},
    {ReadError::TimedOut, Word::Other, Easy::TimedOut, Port::Damaged},
    {ReadError::NoSandbox, Word::Other, Easy::Conversion, Port::CannotOpen},
};

constexpr bool IsInOrder() {
    for (std::size_t at = 0; at < std::size(kCodes); ++at) {
        if (static_cast<std::size_t>(kCodes[at].error) != at)
            return false;
    }
    return std::size(kCodes) == static_cast<std::size_t>(ReadError::NoSandbox) + 1;
}
static_assert(IsInOrder());

}  // namespace

const ContractCodes& CodesOf(ReadError error) {
    return kCodes[static_cast<std::size_t>(error)];
}

}  // namespace zorvane
