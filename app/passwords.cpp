#include "app/passwords.h"

#include <string>
#include <string_view>

#include "common/platform/files.h"
#include "common/platform/terminal.h"

namespace zorvane {
namespace {

// A line of a file without its end; the rest stays in `text`.
std::string TakeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return std::string(line);
}

void Put(const std::string& password, std::string& field) {
    if (field.empty())
        field = password;
}

Status FromFile(LoadOptions& options) {
    const Result<std::string> bytes = ReadWholeFile(options.password_file);
    if (!bytes.ok())
        return bytes.failure().WithContext("--password-file");
    std::string_view rest = bytes.value();
    const std::string first = TakeLine(rest);
    const std::string second = TakeLine(rest);
    if (first.empty())
        return Failure{"--password-file: " + options.password_file +
                       ": its first line, which should be a password, is empty"};
    Put(first, options.original_password);
    Put(second.empty() ? first : second, options.modified_password);
    return Status::Ok();
}

}  // namespace

Status FillPasswords(LoadOptions& options) {
    if (!options.password_file.empty())
        return FromFile(options);
    if (options.ask_password) {
        Result<std::string> password = AskSecret("Password: ");
        if (!password.ok())
            return password.failure().WithContext("--ask-password");
        Put(password.value(), options.password);
    }
    Put(Environment("ZORVANE_PASSWORD").value_or(""), options.password);
    return Status::Ok();
}

}  // namespace zorvane
