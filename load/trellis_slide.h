// Slides to rich or plain text, and the road of a slide deck into the editor.
#pragma once

#include <cstdint>
#include <string>

#include "common/base/side.h"
#include "load/conversion_service.h"
#include "load/load_context.h"

namespace zorvane {

class TrellisSlide {
  public:
    /// `service` is borrowed. `observer` is told the progress in percent.
    TrellisSlide(ConversionService& service, ConversionObserver observer)
        : service_(service), observer_(std::move(observer)) {}

    bool putShowApplication = false;   ///< nothing that could show is ever started
    std::int32_t putTargetFormat = 6;  ///< 6 rich text, 200 plain text
    std::string putSourceFile;
    std::string putTargetFile;
    bool putShowSlideAndShapeNumber = false;
    bool putIncludeNotes = false;
    bool putIncludeNotesOnly = false;
    std::int32_t putFirstSlide = 0;  ///< 0 and 0: all slides
    std::int32_t putLastSlide = 0;
    std::string putPassword;

    /// 0 on success; else `getErrorText` tells.
    std::int32_t Convert();
    const std::string& getErrorText() const { return error_; }

  private:
    ConversionService& service_;
    ConversionObserver observer_;
    std::string error_;
};

/// Always true: a failure is logged, and the load goes on with what `sTempFile` holds.
bool bPreparePowerPointFileForComparing(LoadContext& context, const std::string& sFile,
                                        const std::string& sTempFile, Side side);

}  // namespace zorvane
