#pragma once

#include "app/window/bridge/StateProperties.h"
#include "core/Uuid.h"

#include <QPointer>
#include <QQuickTextDocument>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <atomic>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace orvalen {

class WantedState;

/// The texts below the wanted list, and Tidy List. All work on the text runs on the match queue. The text
/// changes only if the user asks for it.
class ListHelpState : public orvalen::StateProperties {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString caption READ caption NOTIFY changed)
    Q_PROPERTY(QString hint READ hint NOTIFY changed)
    Q_PROPERTY(QStringList leftOut READ leftOut NOTIFY changed)
    Q_PROPERTY(QStringList reasons READ reasons NOTIFY changed)
    Q_PROPERTY(bool canTidy READ canTidy NOTIFY changed)
    Q_PROPERTY(QString question READ question NOTIFY changed)
    Q_PROPERTY(QString questionCount READ questionCount NOTIFY changed)
    Q_PROPERTY(QStringList readings READ readings NOTIFY changed)
    Q_PROPERTY(QString leftOutOfRun READ leftOutOfRun NOTIFY changed)

public:
    ListHelpState(ContentView& view, ChangeNotifier& notifier, WantedState& wanted);
    ~ListHelpState() override;

    QString caption() const { return caption_; }
    QString hint() const { return hint_; }
    /// The first 500 lines that are left out.
    QStringList leftOut() const { return leftOut_; }
    /// The reason for each line of leftOut().
    QStringList reasons() const { return reasons_; }
    bool canTidy() const;
    /// The line that needs a decision and its proposed readings; empty if no line needs one.
    QString question() const;
    QString questionCount() const;
    QStringList readings() const;
    /// Says how many lines were left out by the match run that made the current rows; empty if none.
    QString leftOutOfRun() const;

    Q_INVOKABLE void edit(QQuickTextDocument* document);
    Q_INVOKABLE void show(int leftOutLine);
    Q_INVOKABLE void tidy();
    Q_INVOKABLE void accept(int reading);
    Q_INVOKABLE void leave();
    Q_INVOKABLE void leaveAll();

signals:
    /// Asks the editor to select a part of its text.
    void lineShown(int position, int length);

private:
    using Place = std::pair<int, int>; ///< position and length in the editor's text

    struct Report {
        QString caption;
        QStringList lines;
        QStringList reasons;
        std::vector<Place> places;
    };
    struct Question {
        int line = 0; ///< counted from 0
        QString text;
        QStringList readings;
    };
    struct Tidied {
        QString before;
        QString after;
        std::vector<Question> questions;
    };

    static Report reportOn(const std::string& text);
    static Tidied tidied(const LibraryIndex& index, const std::string& text, const std::string& format);
    void stopCounting();
    void wait();
    void check();
    void receive(Report report);
    void receive(Tidied tidied);
    void countLeftOutOfRun();
    void followRows();
    void replace(int position, int length, const QString& text);
    std::optional<Place> placeOf(const Question& question) const;
    void nextQuestion();

    WantedState& wanted_;
    QPointer<QTextDocument> document_;
    QTimer timer_;
    std::shared_ptr<std::atomic<bool>> stop_ = std::make_shared<std::atomic<bool>>(false);
    std::uint64_t checkNumber_ = 0;
    QString caption_;
    QString hint_;
    QStringList leftOut_;
    QStringList reasons_;
    std::vector<Place> places_;
    std::vector<Question> questions_;
    std::size_t question_ = 0;
    bool wasMatching_ = false;
    std::size_t leftOutNow_ = 0;    ///< number of lines that the running match run left out
    std::size_t leftOutOfRows_ = 0; ///< number of lines that the run that made the rows left out
    std::optional<UUID> firstRow_;  ///< identifies the rows of `leftOutOfRows_`
};

} // namespace orvalen
