#include "LibraryFixture.h"

#include "preferences/Preferences.h"
#include "preferences/StartupCorrections.h"
#include "ui/common/Binding.h"
#include "ui/preferences/PreferencesWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QTest>

#include <gtest/gtest.h>

namespace daylark {

using namespace Qt::StringLiterals;

class PreferencesWindowTest : public ::testing::Test {
protected:
    PreferencesWindowTest() {
        correctAtStart(preferences);
        window = std::make_unique<PreferencesWindow>(preferences, nullptr);
        window->show();
    }
    template<class Control>
    [[nodiscard]] Control* control(const char* key) const {
        auto* found = window->findChild<Control*>(QLatin1String(key));
        EXPECT_TRUE(found) << key;
        return found;
    }
    Preferences preferences;
    std::unique_ptr<PreferencesWindow> window;
};

TEST_F(PreferencesWindowTest, ControlsStoreAtOnceWhatIsSetAndShowWhatChanges) {
    QTest::mouseClick(control<QCheckBox>("showDropText"), Qt::LeftButton, Qt::NoModifier, {8, 8});
    EXPECT_FALSE(preferences.showDropText());
    preferences.showDropText.set(true);
    EXPECT_TRUE(control<QCheckBox>("showDropText")->isChecked());

    QTest::keyClick(control<QSpinBox>("bookmarkDuration"), Qt::Key_Up);
    EXPECT_EQ(preferences.bookmarkDuration(), 2);
    preferences.bookmarkDuration.set(24);
    EXPECT_EQ(control<QSpinBox>("bookmarkDuration")->value(), 24);

    QTest::keyClick(control<QComboBox>("loadFrame"), Qt::Key_Home);
    EXPECT_EQ(preferences.loadFrame(), StartFrame::first);
    preferences.initialTabItem.set(0);
    EXPECT_EQ(control<QComboBox>("initialTabItem")->currentText(), u"As a list"_s);
    EXPECT_EQ(control<QComboBox>("movieMaskRatio")->currentText(),
              u"2.35"_s); // stored as a text, shown as a number
    QTest::keyClick(control<QComboBox>("movieMaskRatio"), Qt::Key_End);
    EXPECT_DOUBLE_EQ(preferences.movieMaskRatio(), 2.4);

    QTest::keyClick(control<QSlider>("volume"), Qt::Key_End);
    EXPECT_FLOAT_EQ(preferences.volume(), 1.0f);
    preferences.volume.set(0.25f);
    EXPECT_EQ(control<QSlider>("volume")->value(), 25);

    auto* name = control<QLineEdit>("901");
    name->selectAll();
    QTest::keyClicks(name, u"Final"_s);
    EXPECT_EQ(preferences.statusNames[0](), u"Final"_s);
    control<ColourButton>("onscreenTextColour")->setColour(QColor(1, 2, 3));
    EXPECT_EQ(preferences.onscreenTextColour(), QColor(1, 2, 3));
}

TEST_F(PreferencesWindowTest, UnknownStoredChoiceStaysUntilAnotherIsPicked) {
    preferences.thumbnailFrame.store(u"Poster Frame"_s);
    EXPECT_EQ(control<QComboBox>("thumbnailFrame")->currentIndex(), -1);
    EXPECT_EQ(preferences.thumbnailFrame.text(), u"Poster Frame"_s);
}

TEST_F(PreferencesWindowTest, SnapshotFieldsFollowWhatTheyBelongTo) {
    EXPECT_FALSE(control<QSpinBox>("snapshotWidth")->isEnabled());
    EXPECT_FALSE(control<QLineEdit>("snapshotName")->isEnabled());
    preferences.snapshotImageScale.set(SnapshotScale::setWidth);
    preferences.snapshotNameSource.set(SnapshotNameSource::userDefined);
    EXPECT_TRUE(control<QSpinBox>("snapshotWidth")->isEnabled());
    EXPECT_TRUE(control<QLineEdit>("snapshotName")->isEnabled());
}

TEST_F(PreferencesWindowTest, ResetGivesEveryFirstValueBackAndShowsIt) {
    preferences.statusNames[0].set(u"Final"_s);
    preferences.handleHead.set(77);
    QTest::mouseClick(control<QPushButton>("resetPreferences"), Qt::LeftButton);
    EXPECT_EQ(control<QLineEdit>("901")->text(), u"Approved"_s);
    EXPECT_EQ(control<QSpinBox>("handleHead")->value(), 9);
    EXPECT_TRUE(preferences.store().storedKeys().isEmpty());
}

TEST_F(PreferencesWindowTest, EveryGroupIsReachedByKeyAndEveryControlHasAName) {
    window->groups()->setFocus();
    EXPECT_EQ(window->groups()->count(), 8);
    QTest::keyClick(window->groups(), Qt::Key_End);
    EXPECT_TRUE(control<QCheckBox>("networkMode")->isVisible());
    const auto fields = window->findChildren<QWidget*>();
    for (const QWidget* field : fields) {
        const bool needsName = qobject_cast<const QComboBox*>(field) || qobject_cast<const QSpinBox*>(field) ||
                               qobject_cast<const QSlider*>(field);
        EXPECT_TRUE(!needsName || !field->accessibleName().isEmpty()) << qPrintable(field->objectName());
    }
}

} // namespace daylark
