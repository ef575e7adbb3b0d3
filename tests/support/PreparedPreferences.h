#pragma once

#include "preferences/Preferences.h"
#include "preferences/StartupCorrections.h"

namespace daylark {

/// Preferences in memory as a first start leaves them, except that movies start at their first frame, from
/// where tests count.
class PreparedPreferences : public Preferences {
public:
    PreparedPreferences() {
        correctAtStart(*this);
        loadFrame.set(StartFrame::first);
    }
};

} // namespace daylark
