// A loader with the real converter, and no office suite.
#pragma once

#include <cstdlib>
#include <string>
#include <string_view>

#include "tests/support/loader_fixture.h"

namespace zorvane {

class ConversionRoadsTest : public LoaderFixture {
  protected:
    ConversionRoadsTest() { setenv("ZORVANE_OFFICE", "none", 1); }
    std::string Loaded(std::string_view name, std::string_view bytes, Side side = Side::Original) {
        const std::string file = system_.folder.Write(name, bytes);
        loader_.Memory().bForceReload = {true, true};
        if (!Load(file, side))
            return "failed: " + Log();
        return Text(TargetOf(side));
    }
};

}  // namespace zorvane
