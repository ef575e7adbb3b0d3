#include "media/decode/FrameReader.h"
#include "media/facts/MovieProbe.h"
#include "media/facts/TimecodeTrack.h"
#include "picture/Thumbnail.h"

#include "support/MovieMaker.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/inotify.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

/// What a stranger may call a movie. Nothing here may be opened as one, and no file that it names may be opened at all.
class HostileMoviesTest : public ::testing::Test {
protected:
    void SetUp() override {
        MovieSpec spec;
        spec.path = path(u"real.ts"_s);
        spec.frames = 12;
        spec.encoder = u"mpeg2video"_s;
        ASSERT_TRUE(makeMovie(spec));
        watch_ = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
        ASSERT_GE(::inotify_add_watch(watch_, QFile::encodeName(spec.path).constData(), IN_OPEN), 0);
    }
    void TearDown() override { ::close(watch_); }

    [[nodiscard]] QString path(const QString& name) const { return folder_.filePath(name); }
    QString write(const QString& name, const QByteArray& bytes) const {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return file.fileName();
    }
    /// Whether the real movie was opened since the last question.
    [[nodiscard]] bool realWasOpened() const {
        alignas(inotify_event) char events[4096];
        return ::read(watch_, events, sizeof events) > 0;
    }
    /// Every way in.
    static void expectNoMovie(const QString& file) {
        EXPECT_FALSE(probeMovie(file)) << file.toStdString();
        EXPECT_FALSE(FrameReader::open(file)) << file.toStdString();
        EXPECT_TRUE(makeThumbnail({file, u"First Frame"_s}).thumbnail.isNil()) << file.toStdString();
        AVTimecodeReader reader(file);
        EXPECT_TRUE(reader.readTimecodeSamples().empty()) << file.toStdString();
    }

    QTemporaryDir folder_;
    int watch_ = -1;
};

TEST_F(HostileMoviesTest, WhatNamesOtherFilesIsNoMovieWhateverItIsCalled) {
    const QByteArray real = QFile::encodeName(path(u"real.ts"_s));
    const QByteArray list = "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:10\n#EXTINF:10,\n";
    const std::vector<std::pair<QString, QByteArray>> hostile{
        {u"segments.mov"_s, list + real + "\n#EXT-X-ENDLIST\n"},
        {u"live.mov"_s, list + real + "\n"}, // without an end: read again and again
        {u"itself.mov"_s, list + "itself.mov\n"},
        {u"pieces.mov"_s, "ffconcat version 1.0\nfile '" + real + "'\n"},
        {u"manifest.mp4"_s, "<?xml version=\"1.0\"?><MPD xmlns=\"urn:mpeg:dash:schema:mpd:2011\" type=\"static\" "
                            "profiles=\"urn:mpeg:dash:profile:isoff-on-demand:2011\"><Period><AdaptationSet><Representation "
                            "id=\"1\" bandwidth=\"1\"><BaseURL>" +
                                real + "</BaseURL></Representation></AdaptationSet></Period></MPD>"},
        {u"session.mov"_s, "v=0\no=- 0 0 IN IP4 127.0.0.1\ns=x\nc=IN IP4 127.0.0.1\nt=0 0\nm=video 5004 RTP/AVP 96\n"},
        {u"titles.mkv"_s, "# VobSub index file, v7 (do not modify this line!)\nid: en, index: 0\n"},
        {u"list.avi"_s, "[playlist]\nFile1=" + real + "\nNumberOfEntries=1\n"},
        {u"drawing.mov"_s, "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\"><image "
                           "xlink:href=\"" +
                               real + "\"/></svg>"}};
    for (const auto& [name, bytes] : hostile) {
        expectNoMovie(write(name, bytes));
        // The same under the name that it asks for.
        for (const char* extension : {".m3u8", ".ffconcat", ".mpd", ".sdp", ".idx", ".svg", ".pls"})
            expectNoMovie(write(name + QLatin1String(extension), bytes));
        EXPECT_FALSE(realWasOpened()) << name.toStdString();
    }
    EXPECT_TRUE(probeMovie(path(u"real.ts"_s))) << "the movie itself is one";
    EXPECT_TRUE(realWasOpened());
}

TEST_F(HostileMoviesTest, PipesDevicesSocketsAndFoldersAreNeverOpened) {
    const QByteArray pipe = QFile::encodeName(path(u"pipe.mov"_s)), socket = QFile::encodeName(path(u"socket.mov"_s));
    ASSERT_EQ(::mkfifo(pipe.constData(), 0600), 0);
    const int listening = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, socket.constData(), sizeof address.sun_path);
    ASSERT_EQ(::bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"folder.mov"_s));
    ASSERT_TRUE(QFile::link(u"/dev/zero"_s, path(u"zero.mov"_s)));
    ASSERT_TRUE(QFile::link(path(u"pipe.mov"_s), path(u"link.mov"_s)));
    ASSERT_TRUE(QFile::link(path(u"circle.mov"_s), path(u"circle.mov"_s)));
    // A pipe that nobody writes to would hold up whoever opens it for ever.
    for (const char* name : {"pipe.mov", "socket.mov", "folder.mov", "zero.mov", "link.mov", "circle.mov", "gone.mov"})
        expectNoMovie(path(QLatin1String(name)));
    ::close(listening);
}

TEST_F(HostileMoviesTest, GivenUpAtOnceWhenCancelled) {
    const CancelFlag cancelled(true);
    const Result<ProbeResult> probed = probeMovie(path(u"real.ts"_s), &cancelled);
    EXPECT_FALSE(probed);
}

} // namespace
} // namespace daylark
