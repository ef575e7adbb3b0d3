#include "picture/colour/ColourConfig.h"

#include "base/jobs/Patience.h"
#include "picture/colour/ColourConfigParts.h"
#include "picture/colour/ColourFiles.h"
#include "picture/colour/ColourLibrary.h"

#include <QFile>

#include <algorithm>
#include <sstream>

// A macro of a global name; no namespace may be around it.
static void initialiseColourFiles() {
    Q_INIT_RESOURCE(colour);
}

namespace daylark {

namespace {

constexpr double middleGrey = 0.18;
/// A share that is gone, or a text that the library has no end of work with.
constexpr std::chrono::seconds configPatience{30};

/// The library's own words, as the one sentence that an `Error` is.
Error errorOf(const std::exception& failure) {
    QString text = QString::fromUtf8(failure.what()).simplified();
    if (text.startsWith(QLatin1String("Error: "))) text.remove(0, 7);
    while (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return {text.isEmpty() ? QStringLiteral("the colour configuration cannot be used") : text};
}

QString text(const char* name) {
    return QString::fromUtf8(name ? name : "");
}

} // namespace

struct ColourConfig::Library {
    ocio::ConstConfigRcPtr config;
};

ColourConfig::ColourConfig(QString path, std::unique_ptr<Library> library)
    : path_(std::move(path))
    , library_(std::move(library)) {
    const ocio::Config& config = *library_->config;
    for (int i = 0; i < config.getNumColorSpaces(); ++i) {
        const char* name = config.getColorSpaceNameByIndex(i);
        const ocio::ConstColorSpaceRcPtr space = config.getColorSpace(name);
        spaces_.push_back({text(name), space ? text(space->getFamily()) : QString()});
    }
    displays_ << text(config.getDefaultDisplay());
    for (int i = 0; i < config.getNumDisplays(); ++i)
        if (const QString name = text(config.getDisplay(i)); !displays_.contains(name)) displays_ << name;
    displays_.removeAll(QString());
    for (int i = 0; i < config.getNumLooks(); ++i)
        looks_ << text(config.getLookNameByIndex(i));
}

ColourConfig::~ColourConfig() = default;

Result<std::shared_ptr<const ColourConfig>> ColourConfig::read(const QString& path) {
    try {
        ocio::SetLoggingLevel(ocio::LOGGING_LEVEL_NONE); // what is wrong is said by what is returned
        auto library = std::make_unique<Library>();
        if (path.isEmpty()) {
            initialiseColourFiles();
            QFile file(QStringLiteral(":/colour/daylark.ocio"));
            if (!file.open(QIODevice::ReadOnly)) return Error{file.errorString()};
            std::istringstream stream(file.readAll().toStdString());
            library->config = ocio::Config::CreateFromStream(stream);
        } else {
            if (const auto checked = checkColourConfigFile(path); !checked) return checked.error();
            library->config = ocio::Config::CreateFromFile(QFile::encodeName(path).constData());
            const Result<QStringList> tables = tableFilesOfParts(*library->config);
            if (!tables) return tables.error();
            if (const auto checked = checkColourTableFiles(*tables); !checked) return checked.error();
        }
        library->config->validate();
        return std::shared_ptr<const ColourConfig>(new ColourConfig(path, std::move(library)));
    } catch (const std::exception& failure) {
        return errorOf(failure);
    }
}

const QString ColourConfig::ownName = QStringLiteral("Daylark");

Result<std::shared_ptr<const ColourConfig>> ColourConfig::chosen(const QString& path) {
    if (path == ownName) return read({});
    using Answer = Result<std::shared_ptr<const ColourConfig>>;
    const auto answer = askWithPatience<Answer>(
        [file = path.isEmpty() ? qEnvironmentVariable("OCIO") : path] { return read(file); }, configPatience);
    return answer ? *answer : Answer(Error{QStringLiteral("the colour configuration takes too long to read")});
}

std::shared_ptr<const ColourConfig> ColourConfig::own() {
    const Result<std::shared_ptr<const ColourConfig>> made = read({});
    return made ? *made : nullptr;
}

QStringList ColourConfig::views(const QString& display) const {
    const ocio::Config& config = *library_->config;
    const QByteArray name = display.toUtf8();
    QStringList views{text(config.getDefaultView(name.constData()))};
    for (int i = 0; i < config.getNumViews(name.constData()); ++i)
        if (const QString view = text(config.getView(name.constData(), i)); !views.contains(view)) views << view;
    views.removeAll(QString());
    return views;
}

QString ColourConfig::spaceNamed(const QString& name) const {
    if (name.isEmpty()) return {};
    const ocio::ConstColorSpaceRcPtr space = library_->config->getColorSpace(name.toUtf8().constData());
    return space ? text(space->getName()) : QString();
}

QString ColourConfig::spaceByRule(const QString& path) const {
    try {
        size_t rule = 0;
        const QString space =
            text(library_->config->getColorSpaceFromFilepath(QFile::encodeName(path).constData(), rule));
        return rule + 1 < library_->config->getFileRules()->getNumEntries() ? spaceNamed(space) : QString();
    } catch (const std::exception&) {
        return {}; // a rule that cannot be carried out says nothing
    }
}

QString ColourConfig::spaceOfLight() const {
    return spaceNamed(QString::fromLatin1(ocio::ROLE_SCENE_LINEAR));
}

QString ColourConfig::spaceOf(const Source& source) const {
    if (!source.isLight && !source.isRun && source.ownWord.isEmpty()) return {};
    if (const QString named = spaceNamed(source.ownWord); !named.isEmpty()) return named;
    if (const QString byRule = spaceByRule(source.path); !byRule.isEmpty()) return byRule;
    return source.isLight ? spaceOfLight() : QString();
}

DisplayTransform ColourConfig::fitted(DisplayTransform transform) const {
    if (!displays_.contains(transform.display)) transform.display = displays_.value(0);
    const QStringList known = views(transform.display);
    if (!known.contains(transform.view)) transform.view = known.value(0);
    if (!looks_.contains(transform.look)) transform.look.clear();
    return transform;
}

Result<std::shared_ptr<const DisplayProcessor>> ColourConfig::processor(const DisplayTransform& transform) const {
    try {
        if (spaceNamed(transform.inputSpace).isEmpty())
            return Error{QStringLiteral("the colour configuration has no space \"%1\"").arg(transform.inputSpace)};
        const auto view = ocio::DisplayViewTransform::Create();
        view->setSrc(transform.inputSpace.toUtf8().constData());
        view->setDisplay(transform.display.toUtf8().constData());
        view->setView(transform.view.toUtf8().constData());
        const auto pipeline = ocio::LegacyViewingPipeline::Create();
        pipeline->setDisplayViewTransform(view);
        if (!transform.isLookedAtAsItIs()) {
            const auto looking = ocio::ExposureContrastTransform::Create();
            looking->setStyle(ocio::EXPOSURE_CONTRAST_LINEAR);
            looking->setPivot(middleGrey);
            looking->setExposure(transform.exposure);
            looking->setGamma(1 / transform.gamma);
            pipeline->setLinearCC(looking);
        }
        if (!transform.look.isEmpty()) {
            // A look that is chosen comes on top of those that the view brings along.
            QString looks = text(library_->config->getDisplayViewLooks(transform.display.toUtf8().constData(),
                                                                       transform.view.toUtf8().constData()));
            looks += (looks.isEmpty() ? QString() : QStringLiteral(", ")) + transform.look;
            pipeline->setLooksOverrideEnabled(true);
            pipeline->setLooksOverride(looks.toUtf8().constData());
        }
        auto library = std::make_unique<DisplayProcessor::Library>();
        library->processor = pipeline->getProcessor(library_->config, library_->config->getCurrentContext());
        const std::shared_ptr<DisplayProcessor> made(new DisplayProcessor(transform, std::move(library)));
        const ocio::ConstColorSpaceRcPtr input =
            library_->config->getColorSpace(transform.inputSpace.toUtf8().constData());
        made->makeQuickForm(input->getEncoding() == std::string("scene-linear"));
        return std::shared_ptr<const DisplayProcessor>(made);
    } catch (const std::exception& failure) {
        return errorOf(failure);
    }
}

} // namespace daylark
