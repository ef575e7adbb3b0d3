// What another program says on the socket of the running one: read as nothing, or as a message that is written the same.
#include "ui/desktop/HandOverMessage.h"

#include "SeedFolder.h"

#include <cstdint>
#include <cstdlib>

using namespace daylark;

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    const HandOverMessage files{QByteArray(16, 'i'), {QStringLiteral("/v/a.mov"), QString()}, "token"};
    fuzz::seedCorpus(*argc, *argv, "files", files.bytes().mid(HandOverMessage::lengthSize));
    const HandOverMessage nothing{QByteArray(16, '\0'), {}, {}};
    fuzz::seedCorpus(*argc, *argv, "nothing", nothing.bytes().mid(HandOverMessage::lengthSize));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const QByteArray body(reinterpret_cast<const char*>(bytes), qsizetype(size));
    const auto message = HandOverMessage::read(body);
    if (!message) return 0;
    const QByteArray again = message->bytes();
    if (HandOverMessage::lengthOf(again) != quint32(again.size() - HandOverMessage::lengthSize)) std::abort();
    if (HandOverMessage::read(again.mid(HandOverMessage::lengthSize)) != message) std::abort();
    return 0;
}
