#include "FuzzRecords.h"

#include <QDir>
#include <QFile>

// Writes the seed corpora: for the archive one small file a value class, binary and XML.

using namespace daylark;
using namespace daylark::fuzz;
using namespace Qt::StringLiterals;

namespace {

bool writeSeed(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

AttributedString styledText() {
    AttributedString text(u"plain "_s);
    text.append(u"bold"_s, {.bold = true, .fontFamily = u"Courier"_s, .pointSize = 12});
    text.append(u" red \U0001F3AC"_s, {.italic = true, .underline = true, .colour = QColor(Qt::red)});
    return text;
}

std::vector<std::pair<QString, QByteArray>> archiveSeeds() {
    QImage picture(5, 4, QImage::Format_RGB32);
    picture.fill(Qt::green);
    auto member = std::make_shared<Anything>();
    member->values[0] = u"take"_s;
    member->values[1] = 25;
    member->values[2] = true;
    member->values[3] = 23.976;
    auto other = std::make_shared<Anything>();
    other->values[0] = Value(member);
    other->values[1] = Value(Value::Array{Value(other)});
    auto group = std::make_shared<Group>();
    group->members = {member, other, member};
    const std::vector<std::pair<QString, Value>> values{
        {u"string"_s, Value(u"shot \u00E9 \U0001F3AC"_s)},
        {u"data"_s, Value(QByteArray("\0\xFF bytes", 8))},
        {u"date"_s, Value(Date{12.5})},
        {u"url"_s, Value(ArchivedUrl{u"a/b.mov"_s, u"file:///reel/"_s})},
        {u"colour"_s, Value(QColor(1, 2, 3, 4))},
        {u"point"_s, Value(QPointF(1.5, -2))},
        {u"uuid"_s, Value(QUuid(u"{71dc068e-3420-45ff-919e-3a267d55ec22}"_s))},
        {u"text"_s, Value(styledText())},
        {u"image"_s, Value(Image::fromQImage(picture))},
        {u"icon"_s, Value(Image::fromEncoded("picture", {16, 16}, u"flag.png"_s))},
        {u"numbers"_s, Value(Value::Array{1, -1, 1.5, false, Number(std::numeric_limits<quint64>::max()),
                                          qint64(1) << 40})},
        {u"dictionary"_s, Value(Value::Dictionary{{Value(u"k"_s), Value(1)},
                                                  {Value(2), Value(Value::Array{u"v"_s, Value()})}})},
        {u"records"_s, Value(group)},
    };
    std::vector<std::pair<QString, QByteArray>> seeds;
    for (const auto& [name, value] : values)
        seeds.emplace_back(name, archiveRoot(value));
    other->values[1] = Value(); // the cycle would keep the records alive
    return seeds;
}

constexpr char kXml[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//x//y\" \"http://z\">\n"
    "<plist "
    "version=\"1.0\"><dict><key>$archiver</key><string>NSKeyedArchiver</string><key>$objects</key><array>"
    "<string>$null</string><dict><key>$class</key><dict><key>CF$UID</key><integer>2</integer></dict>"
    "<key>NS.objects</key><array><dict><key>CF$UID</key><integer>3</integer></dict></array></dict>"
    "<dict><key>$classname</key><string>NSArray</string></dict><real>1.5</real><true/><data>AAEC</data>"
    "<date>2020-02-02T02:02:02Z</date></array><key>$top</key><dict><key>root</key><dict>"
    "<key>CF$UID</key><integer>1</integer></dict></dict></dict></plist>";

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const QString folder = QString::fromLocal8Bit(argv[1]) + u"/archive"_s;
    if (!QDir().mkpath(folder)) return 1;
    bool written = writeSeed(folder + u"/xml"_s, kXml);
    for (const auto& [name, bytes] : archiveSeeds())
        written = written && writeSeed(folder + u'/' + name, bytes);
    return written ? 0 : 1;
}
