// Documents that are read until somebody stops the search.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <thread>

#include "find/engine/find_run.h"

namespace zorvane {

class EndlessDocuments : public DocumentTexts {
  public:
    bool IsDocument(std::string_view name) override { return name.ends_with(".doc"); }
    Text TextOf(const std::string&, const std::function<bool()>& stop) override {
        while (!stop())
            std::this_thread::yield();
        return {nullptr, "stopped", {}};
    }
};

}  // namespace zorvane
