// The request "redline" of zorvane-convert: two packages in, one with tracked changes and its
// certificate out.
#pragma once

#include <string_view>

#include "common/base/side.h"
#include "load/conversion_message.h"
#include "load/readers/job_output.h"
#include "load/readers/reader.h"

namespace zorvane {

/// Keys of the request: format (odt; otherwise docx), author, date, idprefix, formatting,
/// keeptracked, noverify; name, secondname, password, secondpassword. Two packages of that format
/// are kept; documents of any other kind are laid out anew. The first part of the answer is the
/// document, the second its certificate.
ReadEnd RunRedlineJob(const PerSide<std::string_view>& given, const ConversionMessage& job,
                      ReadMonitor& monitor, JobOutput& output);

}  // namespace zorvane
