#pragma once

#include <QEventLoop>

namespace daylark::tool {

/// Turns the event loop until `done` holds, which is looked at now and whenever the signal comes.
template<class Object, class Signal, class Done>
void waitFor(const Object& object, Signal signal, Done done) {
    QEventLoop loop;
    QObject::connect(&object, signal, &loop, [&] {
        if (done()) loop.quit();
    });
    if (!done()) loop.exec();
}

} // namespace daylark::tool
