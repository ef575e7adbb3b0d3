// Links from strangers: whatever the text, reading gives a value, and what is written of it is read as it was.
#include "app/links/ReviewLink.h"

#include "SeedFolder.h"

#include <cstdint>
#include <cstdlib>

using namespace daylark;

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    fuzz::seedCorpus(*argc, *argv, "playlist", "daylark://addplaylist/Day%201/v/a%20b.mov,/v//c%2C.mov,");
    fuzz::seedCorpus(*argc, *argv, "links", "daylark://link/v/%C3%A9.mov\rdaylark://playmedia/C:\\a.mov,/b.png");
    fuzz::seedCorpus(*argc, *argv, "none", "DAYLARK:///link%FF%,,%zz%E");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(bytes), qsizetype(size));
    for (const QString& link : reviewLinksIn(text) + QStringList{text}) {
        const ReviewLink read = readReviewLink(link);
        const bool known = read.command != ReviewLink::Command::none;
        if (known == read.playlistName.isEmpty() || known == read.paths.isEmpty()) std::abort();
        qsizetype letters = 0;
        for (const QString& path : read.paths) {
            if (path.contains(QLatin1Char(','))) std::abort();
            letters += path.size();
            if (readReviewLink(movieAddress(QLatin1Char('/') + path)).paths !=
                QStringList{QLatin1Char('/') + path})
                std::abort();
        }
        if (letters > link.size()) std::abort();
        if (read.command == ReviewLink::Command::addPlaylist && read.playlistName.contains(QLatin1Char('/')))
            std::abort();
    }
    return 0;
}
