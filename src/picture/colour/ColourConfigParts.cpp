#include "picture/colour/ColourConfigParts.h"

#include <QFile>

#include <algorithm>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace daylark {

namespace {

constexpr int deepest = 64;
constexpr double mostSteps = 100'000; // of one part with all that it refers to

class Walk {
public:
    explicit Walk(const ocio::Config& config)
        : config_(config)
        , context_(config.getCurrentContext()) {}

    Result<QStringList> all() {
        std::vector<Key> keys;
        const auto everywhere = ocio::SEARCH_REFERENCE_SPACE_ALL;
        for (int i = 0; i < config_.getNumColorSpaces(everywhere, ocio::COLORSPACE_ALL); ++i)
            keys.push_back({Kind::space, config_.getColorSpaceNameByIndex(everywhere, ocio::COLORSPACE_ALL, i)});
        for (int i = 0; i < config_.getNumLooks(); ++i)
            keys.push_back({Kind::look, config_.getLookNameByIndex(i)});
        for (int i = 0; i < config_.getNumViewTransforms(); ++i)
            keys.push_back({Kind::view, config_.getViewTransformNameByIndex(i)});
        for (int i = 0; i < config_.getNumNamedTransforms(ocio::NAMEDTRANSFORM_ALL); ++i)
            keys.push_back({Kind::named, config_.getNamedTransformNameByIndex(ocio::NAMEDTRANSFORM_ALL, i)});
        const bool isEndless =
            std::any_of(keys.begin(), keys.end(), [this](const Key& key) { return stepsOf(key, 0) > mostSteps; });
        if (isEndless) return Error{QStringLiteral("the colour configuration's parts refer to themselves or to too many others")};
        tables_.removeDuplicates();
        return tables_;
    }

private:
    enum class Kind { space, look, view, named };
    using Key = std::pair<Kind, std::string>;
    struct Found { ///< in the transforms of one part
        double steps = 0;
        std::vector<Key> others;
    };
    static constexpr double endless = 2 * mostSteps;

    /// With all that it refers to; more than `mostSteps` where that has no end.
    double stepsOf(const Key& key, int depth) {
        if (depth > deepest) return endless;
        const auto [known, isNew] = steps_.try_emplace(key, endless); // until it is known: met again on the way means in circles
        if (!isNew) return known->second;
        const Found found = lookInto(key);
        double steps = 1 + found.steps;
        for (const Key& other : found.others)
            steps = std::min(endless, steps + stepsOf(other, depth + 1));
        return steps_[key] = steps;
    }

    Found lookInto(const Key& key) {
        Found found;
        const char* name = key.second.c_str();
        if (key.first == Kind::space) {
            if (const auto space = config_.getColorSpace(name)) {
                take(space->getTransform(ocio::COLORSPACE_DIR_TO_REFERENCE), found);
                take(space->getTransform(ocio::COLORSPACE_DIR_FROM_REFERENCE), found);
            }
        } else if (key.first == Kind::look) {
            if (const auto look = config_.getLook(name)) {
                addSpace(look->getProcessSpace(), found);
                take(look->getTransform(), found);
                take(look->getInverseTransform(), found);
            }
        } else if (key.first == Kind::view) {
            if (const auto view = config_.getViewTransform(name)) {
                take(view->getTransform(ocio::VIEWTRANSFORM_DIR_TO_REFERENCE), found);
                take(view->getTransform(ocio::VIEWTRANSFORM_DIR_FROM_REFERENCE), found);
            }
        } else if (const auto named = config_.getNamedTransform(name)) {
            take(named->getTransform(ocio::TRANSFORM_DIR_FORWARD), found);
            take(named->getTransform(ocio::TRANSFORM_DIR_INVERSE), found);
        }
        return found;
    }

    void take(const ocio::ConstTransformRcPtr& transform, Found& found) {
        if (!transform) return;
        ++found.steps;
        if (const auto group = std::dynamic_pointer_cast<const ocio::GroupTransform>(transform)) {
            for (int i = 0; i < group->getNumTransforms(); ++i)
                take(group->getTransform(i), found);
        } else if (const auto file = std::dynamic_pointer_cast<const ocio::FileTransform>(transform)) {
            addTable(*file);
        } else if (const auto between = std::dynamic_pointer_cast<const ocio::ColorSpaceTransform>(transform)) {
            addSpace(between->getSrc(), found);
            addSpace(between->getDst(), found);
        } else if (const auto looking = std::dynamic_pointer_cast<const ocio::LookTransform>(transform)) {
            addSpace(looking->getSrc(), found);
            addSpace(looking->getDst(), found);
            addLooks(looking->getLooks(), found);
        } else if (const auto viewing = std::dynamic_pointer_cast<const ocio::DisplayViewTransform>(transform)) {
            const char *display = viewing->getDisplay(), *view = viewing->getView();
            addSpace(viewing->getSrc(), found);
            addSpace(config_.getDisplayViewColorSpaceName(display, view), found);
            addSpace(display, found); // what a shared view may mean
            found.others.push_back({Kind::view, config_.getDisplayViewTransformName(display, view)});
            addLooks(config_.getDisplayViewLooks(display, view), found);
        }
    }

    void addTable(const ocio::FileTransform& file) {
        try {
            tables_ << QFile::decodeName(context_->resolveFileLocation(file.getSrc()));
        } catch (const std::exception&) { // not there: missed when it is wanted
        }
    }

    /// By its own name, an alias, a role, or a named transform's in a space's place.
    void addSpace(const char* name, Found& found) {
        if (!name || !*name) return;
        const std::string meant = context_->resolveStringVar(name);
        if (const auto space = config_.getColorSpace(meant.c_str()))
            found.others.push_back({Kind::space, space->getName()});
        else if (const auto named = config_.getNamedTransform(meant.c_str()))
            found.others.push_back({Kind::named, named->getName()});
    }

    /// "+neutral, -grade | warm".
    void addLooks(const char* looks, Found& found) {
        std::string names = context_->resolveStringVar(looks ? looks : "");
        std::replace_if(names.begin(), names.end(), [](char c) { return c == ',' || c == ':' || c == '|'; }, '\n');
        std::istringstream lines(names);
        for (std::string name; std::getline(lines, name);) {
            const size_t first = name.find_first_not_of(" \t+-"), last = name.find_last_not_of(" \t");
            if (first != std::string::npos) found.others.push_back({Kind::look, name.substr(first, last - first + 1)});
        }
    }

    const ocio::Config& config_;
    const ocio::ConstContextRcPtr context_;
    std::map<Key, double> steps_;
    QStringList tables_;
};

} // namespace

Result<QStringList> tableFilesOfParts(const ocio::Config& config) {
    return Walk(config).all();
}

} // namespace daylark
