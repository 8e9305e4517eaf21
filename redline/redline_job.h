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
/// keeptracked, noverify; name, secondname, password, secondpassword; text, secondtext: so many
/// bytes of RTF stand in front of the document, which is laid out so. Two packages of that format
/// are kept; documents of any other kind are laid out anew, as they are read here or as that RTF
/// has it. The first part of the answer is the document, the second its certificate.
ReadEnd RunRedlineJob(const PerSide<std::string_view>& files, const ConversionMessage& job,
                      ReadMonitor& monitor, JobOutput& output);

}  // namespace zorvane
