#include "ui/common/Theme.h"

#include "platform/NamedImages.h"

#include <QApplication>
#include <QFontDatabase>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QStyle>
#include <QStyleFactory>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <map>

namespace daylark::theme {

namespace {

/// Draws a named icon at exactly the pixels asked for, so that it is as crisp at 150 % as at 100 %.
class NamedIconEngine : public QIconEngine {
public:
    explicit NamedIconEngine(const QString& name)
        : name_(name) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const qreal ratio = painter->device() ? painter->device()->devicePixelRatio() : 1.0;
        const int side = std::min(rect.width(), rect.height());
        QPixmap picture = scaledPixmap(QSize(side, side) * ratio, mode, state, ratio);
        picture.setDevicePixelRatio(ratio);
        const QSizeF size = picture.deviceIndependentSize();
        painter->drawPixmap(QPointF(rect.x() + (rect.width() - size.width()) / 2,
                                    rect.y() + (rect.height() - size.height()) / 2),
                            picture);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return scaledPixmap(size, mode, state, 1.0);
    }
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal) override {
        const int side = std::max(1, std::min(size.width(), size.height()));
        const bool dimmed = mode == QIcon::Disabled;
        const QString key = QStringLiteral("daylark/%1/%2/%3").arg(name_).arg(side).arg(dimmed);
        QPixmap picture;
        if (QPixmapCache::find(key, &picture)) return picture;
        const QImage image = namedImage(name_, side);
        picture = QPixmap(side, side);
        picture.fill(Qt::transparent);
        if (!image.isNull()) {
            QPainter painter(&picture);
            painter.setOpacity(dimmed ? 0.35 : 1.0);
            painter.drawImage(QPointF((side - image.width()) / 2.0, (side - image.height()) / 2.0), image);
        }
        QPixmapCache::insert(key, picture);
        return picture;
    }
    QString key() const override { return QStringLiteral("daylark.named"); }
    QIconEngine* clone() const override { return new NamedIconEngine(*this); }

private:
    QString name_;
};

QPalette darkPalette() {
    QPalette palette;
    const auto both = [&palette](QPalette::ColorRole role, const QColor& colour, const QColor& whenDisabled) {
        palette.setColor(QPalette::Active, role, colour);
        palette.setColor(QPalette::Inactive, role, colour);
        palette.setColor(QPalette::Disabled, role, whenDisabled);
    };
    both(QPalette::Window, window, window);
    both(QPalette::WindowText, text, disabled);
    both(QPalette::Base, panel, window);
    both(QPalette::AlternateBase, QColor(0x26, 0x26, 0x26), window);
    both(QPalette::Text, text, disabled);
    both(QPalette::Button, raised, panel);
    both(QPalette::ButtonText, text, disabled);
    both(QPalette::BrightText, selectedText, disabled);
    both(QPalette::Highlight, selection, line);
    both(QPalette::HighlightedText, selectedText, disabled);
    both(QPalette::ToolTipBase, raised, raised);
    both(QPalette::ToolTipText, text, text);
    both(QPalette::PlaceholderText, dimText, disabled);
    both(QPalette::Link, focus, disabled);
    both(QPalette::LinkVisited, focus, disabled);
    both(QPalette::Light, line, line);
    both(QPalette::Midlight, line, line);
    both(QPalette::Mid, line, line);
    both(QPalette::Dark, QColor(0x14, 0x14, 0x14), QColor(0x14, 0x14, 0x14));
    both(QPalette::Shadow, QColor(0, 0, 0), QColor(0, 0, 0));
    return palette;
}

const char* const styleSheetText = R"(
QToolTip { background: #2d2d2d; color: #d6d6d6; border: 1px solid #3a3a3a; padding: 4px; }
QMainWindow::separator, QSplitter::handle { background: #141414; }
QSplitter::handle:horizontal { width: 1px; }
QSplitter::handle:vertical { height: 1px; }
QMenuBar { background: #1b1b1b; padding: 1px 4px; }
QMenuBar::item { padding: 4px 8px; background: transparent; border-radius: 3px; }
QMenuBar::item:selected { background: #2d2d2d; }
QMenuBar > QToolButton { qproperty-toolButtonStyle: ToolButtonTextOnly; qproperty-text: "\00bb"; padding: 0px; }
QMenu { background: #232323; border: 1px solid #3a3a3a; padding: 4px; }
QMenu::item { padding: 4px 24px 4px 24px; border-radius: 3px; min-height: 16px; }
QMenu::item:selected { background: #3f5a78; color: #ffffff; }
QMenu::item:disabled { color: #5c5c5c; background: transparent; }
QMenu::separator { height: 1px; background: #3a3a3a; margin: 4px 8px; }
QMenu::icon { left: 4px; }
QHeaderView { background: #1b1b1b; border: none; }
QHeaderView::section { background: #1b1b1b; color: #8e8e8e; border: none; border-right: 1px solid #2d2d2d;
    border-bottom: 1px solid #2d2d2d; padding: 0 4px; min-height: 24px; }
QHeaderView::section:hover { color: #d6d6d6; }
QTableView, QListView, QTreeView { background: #232323; border: none; outline: 0; gridline-color: transparent; }
QStatusBar { background: #1b1b1b; color: #8e8e8e; border-top: 1px solid #2d2d2d; }
QStatusBar::item { border: none; }
QToolButton { background: transparent; border: 1px solid transparent; border-radius: 4px; padding: 3px; }
QToolButton:hover { background: #2d2d2d; }
QToolButton:pressed, QToolButton:checked { background: #3a3a3a; }
QToolButton:focus { border: 1px solid #6f9bd1; }
QToolButton::menu-indicator { image: none; }
QToolButton[popupMode="1"] { padding-right: 14px; }
QToolButton::menu-button { background: transparent; border: none; width: 14px; }
QLineEdit, QPlainTextEdit, QTextEdit { background: #1b1b1b; border: 1px solid #3a3a3a; border-radius: 3px;
    padding: 2px 4px; selection-background-color: #3f5a78; selection-color: #ffffff; }
QLineEdit:focus, QPlainTextEdit:focus, QTextEdit:focus { border: 1px solid #6f9bd1; }
QLineEdit:disabled { color: #5c5c5c; border-color: #2d2d2d; }
QComboBox QAbstractItemView { border: 1px solid #5a5a5a; padding: 2px; }
QDialogButtonBox { dialogbuttonbox-buttons-have-icons: 0; }
QProgressBar { background: #141414; border: none; border-radius: 3px; text-align: center; }
QProgressBar::chunk { background: #6f9bd1; border-radius: 3px; }
QScrollBar:vertical { background: transparent; width: 12px; margin: 0; }
QScrollBar:horizontal { background: transparent; height: 12px; margin: 0; }
QScrollBar::handle { background: #4a4a4a; border-radius: 4px; margin: 2px; }
QScrollBar::handle:vertical { min-height: 32px; }
QScrollBar::handle:horizontal { min-width: 32px; }
QScrollBar::handle:hover { background: #5c5c5c; }
QScrollBar::add-line, QScrollBar::sub-line, QScrollBar::add-page, QScrollBar::sub-page { background: none;
    border: none; width: 0; height: 0; }
QAbstractScrollArea::corner { background: transparent; }
)";

} // namespace

void apply(QApplication& application) {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(darkPalette());
    QToolTip::setPalette(darkPalette());
    QPalette boxes = darkPalette(); // an empty box is to be seen on the window's grey
    boxes.setColor(QPalette::Active, QPalette::Base, line);
    boxes.setColor(QPalette::Inactive, QPalette::Base, line);
    QApplication::setPalette(boxes, "QCheckBox");
    application.setStyleSheet(QString::fromLatin1(styleSheetText));
    QApplication::setEffectEnabled(Qt::UI_AnimateMenu, false);
    QApplication::setEffectEnabled(Qt::UI_AnimateCombo, false);
    QPixmapCache::setCacheLimit(64 * 1024);
    QApplication::setWindowIcon(icon(QStringLiteral("daylark")));
}

QFont numberFont() {
    // Asked once: the font database takes longer to answer than the text to paint.
    static const QString family = QStringLiteral("PT Mono");
    static const bool isInstalled = QFontDatabase::hasFamily(family);
    QFont font = isInstalled ? QFont(family) : QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(std::max(8.0, QApplication::font().pointSizeF()));
    font.setBold(true);
    return font;
}

QFont smallFont() {
    QFont font = QApplication::font();
    font.setPointSizeF(std::max(7.0, font.pointSizeF() - 1));
    return font;
}

QColor flagColour(const QString& code) {
    static const std::map<QString, QColor> colours{
        {QStringLiteral("901"), QColor(0x58, 0xa5, 0x5c)}, {QStringLiteral("902"), QColor(0xd9, 0xbd, 0x3c)},
        {QStringLiteral("903"), QColor(0xdd, 0x8a, 0x34)}, {QStringLiteral("904"), QColor(0xcf, 0x4c, 0x46)},
        {QStringLiteral("905"), QColor(0x8f, 0x6c, 0xc4)}, {QStringLiteral("906"), QColor(0x4a, 0x86, 0xcf)},
        {QStringLiteral("907"), QColor(0x8a, 0x8a, 0x8a)}};
    const auto found = colours.find(code);
    return found == colours.end() ? QColor() : found->second;
}

QIcon icon(const QString& name) {
    return name.isEmpty() || !hasNamedImage(name) ? QIcon() : QIcon(new NamedIconEngine(name));
}

} // namespace daylark::theme
