#pragma once

#include "base/jobs/CancelFlag.h"
#include "base/jobs/WorkQueue.h"

#include <QDateTime>
#include <QHash>
#include <QPersistentModelIndex>
#include <QSortFilterProxyModel>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

class QFileSystemModel;

namespace daylark {

/// The files of a dialog with every run of numbered pictures as one line: that of its first picture, under the run's name, with
/// the size of all and the time of the newest. Which names are runs, and how large they are, a worker says; until it has said
/// what a folder's are, its pictures are not shown. Interface thread.
class RunLines : public QSortFilterProxyModel {
    Q_OBJECT
public:
    explicit RunLines(QObject* parent = nullptr);
    ~RunLines() override;

    void setSourceModel(QAbstractItemModel* files) override; ///< a QFileSystemModel
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    /// Whether each of the paths is a file, or a name with marks in it whose run is there; `answer` gets the first that is
    /// neither, or a null text. A later question drops an earlier one's answer.
    void askForMedia(const QStringList& paths, std::function<void(const QString& wrong)> answer);

protected:
    [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
    [[nodiscard]] bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    struct Line {
        QString first, text; ///< the first picture's name; the run's
        QStringList names;   ///< of all that are there
        qint64 bytes = -1;   ///< unknown yet
        QDateTime newest;
    };
    struct Lines {
        std::vector<Line> runs;
        QHash<QString, int> runOf; ///< of every picture's name; -1: it stands alone
        static Lines in(const QString& folder);
        void measure(const QString& folder, const CancelFlag& cancelled);
    };

    void follow(const QString& folder);
    void look();
    void take(Lines lines);
    void rowsCome(const QModelIndex& parent, int first, int last);
    [[nodiscard]] const Line* lineOf(const QModelIndex& ofFiles) const;

    QFileSystemModel* files_ = nullptr;
    QString folder_;
    QPersistentModelIndex shown_; ///< the folder's, among the files
    Lines lines_;
    bool isKnown_ = false, isLooking_ = false;
    QTimer lookAgain_;
    int question_ = 0;
    std::shared_ptr<CancelFlag> cancelled_ = std::make_shared<CancelFlag>(false); ///< a look at another folder
    std::shared_ptr<CancelFlag> ended_ = std::make_shared<CancelFlag>(false);
    WorkQueue work_{2}; ///< last, so that it ends first: a look, and a question
};

} // namespace daylark
