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
#include <QSignalSpy>
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

TEST_F(PreferencesWindowTest, EveryPageFitsItsWindowAndSaysWhatAStartChanges) {
    for (int page = 0; page < window->groups()->count(); ++page) {
        window->groups()->setCurrentRow(page);
        QCoreApplication::processEvents();
        for (const QWidget* each : window->findChildren<QWidget*>()) {
            const bool isControl = qobject_cast<const QCheckBox*>(each) || qobject_cast<const QComboBox*>(each) ||
                                   qobject_cast<const QLineEdit*>(each) || qobject_cast<const QPushButton*>(each);
            if (!isControl || !each->isVisible()) continue;
            const int right = each->mapTo(window.get(), QPoint(each->width(), 0)).x();
            EXPECT_LE(right, window->width() - 12) << each->objectName().toStdString() << " on page " << page;
            if (qobject_cast<const QCheckBox*>(each)) {
                EXPECT_GE(each->width(), each->sizeHint().width()) << each->objectName().toStdString();
            }
        }
    }
    auto* lasts = window->findChild<QWidget*>(u"startFrameLasts"_s);
    ASSERT_TRUE(lasts);
    EXPECT_TRUE(lasts->isHidden());
    preferences.loadFrame.set(StartFrame::sameFrame);
    EXPECT_FALSE(lasts->isHidden());
    correctAtStart(preferences);
    EXPECT_EQ(preferences.loadFrame(), StartFrame::first);
    EXPECT_TRUE(lasts->isHidden());

    QSignalSpy wanted(window.get(), &PreferencesWindow::searchFolderWanted);
    control<QPushButton>("chooseSearchFolder")->click();
    EXPECT_EQ(wanted.count(), 1);
    preferences.autoSearchPath.set(u"/shows/dailies"_s);
    EXPECT_EQ(control<QLineEdit>("autoSearchPath")->text(), u"/shows/dailies"_s);
}

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
    preferences.firstFrameNumber.set(FirstFrameNumber::other);
    EXPECT_TRUE(control<QSpinBox>("otherFirstFrameNumber")->isEnabled());
    QTest::mouseClick(control<QPushButton>("resetPreferences"), Qt::LeftButton);
    for (const QComboBox* each : window->findChildren<QComboBox*>())
        EXPECT_FALSE(each->currentText().isEmpty()) << each->objectName().toStdString();
    EXPECT_FALSE(control<QSpinBox>("otherFirstFrameNumber")->isEnabled());
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
