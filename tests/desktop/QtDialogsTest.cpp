#include "platform/desktop/QtDialogs.h"

#include "desktop/EventLoop.h"
#include "support/TemporaryFolder.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Waits for a visible dialog and returns the topmost one.
QDialog* openDialog() {
    QDialog* dialog = nullptr;
    turnUntil([&] {
        dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (!dialog && widget->isVisible())
                dialog = qobject_cast<QDialog*>(widget);
        return dialog != nullptr;
    });
    EXPECT_TRUE(dialog && QTest::qWaitForWindowActive(dialog));
    return dialog;
}

QLineEdit* nameField(QDialog* dialog) {
    return dialog->findChild<QLineEdit*>("fileNameEdit");
}

QPushButton* button(QDialog* dialog, const QString& text) {
    for (QPushButton* candidate : dialog->findChildren<QPushButton*>())
        if (candidate->text().remove('&') == text)
            return candidate;
    return nullptr;
}

/// Returns the names in the dialog's list of files, sorted.
QStringList names(QDialog* dialog) {
    const auto* list = dialog->findChild<QAbstractItemView*>("treeView");
    QStringList result;
    for (int i = 0; i < list->model()->rowCount(list->rootIndex()); ++i)
        result.append(list->model()->index(i, 0, list->rootIndex()).data().toString());
    result.sort();
    return result;
}

/// Waits for the name in the dialog's list and clicks it.
void click(QDialog* dialog, const QString& name, Qt::KeyboardModifiers modifiers = {}, bool twice = false) {
    auto* list = dialog->findChild<QAbstractItemView*>("treeView");
    QModelIndex index;
    ASSERT_TRUE(turnUntil([&] {
        const QAbstractItemModel& files = *list->model();
        index = files.match(files.index(0, 0, list->rootIndex()), Qt::DisplayRole, name, 1, Qt::MatchExactly)
                    .value(0);
        return index.isValid();
    })) << name.toStdString();
    list->scrollTo(index);
    const QPoint middle = list->visualRect(index).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, modifiers, middle);
    if (twice)
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, modifiers, middle);
}

void type(QDialog* dialog, const QString& text) {
    nameField(dialog)->setFocus();
    nameField(dialog)->selectAll();
    QTest::keyClicks(nameField(dialog), text);
    QTest::keyClick(nameField(dialog), Qt::Key_Return);
}

/// Runs `act` on the dialog that the next modal call opens. Cancels a dialog that is still open afterwards,
/// so that a failure does not block the test.
void whileOpen(std::function<void(QDialog*)> act) {
    QTimer::singleShot(0, [act = std::move(act)] {
        QDialog* dialog = openDialog();
        ASSERT_NE(dialog, nullptr);
        QTimer watch; // rejects an unexpected question, which would block the test
        QObject::connect(&watch, &QTimer::timeout, [] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            ADD_FAILURE() << "asked: " << box->text().toStdString();
            box->reject();
        });
        watch.start(2000);
        act(dialog);
        if (dialog->isVisible())
            dialog->reject();
    });
}

std::vector<std::string> paths(const std::vector<Location>& locations) {
    std::vector<std::string> result;
    for (const Location& location : locations)
        result.push_back(location.path);
    return result;
}

class QtDialogsTest : public testing::Test {
protected:
    QtDialogsTest() {
        folder.write("House/Night Band - Last Train Home.mp3", "x");
        folder.write("Slow.MP3", "x");
        folder.write("Fast.wav", "x");
        folder.write("Notes <b>bold.txt", "x");
        folder.makeFolder("Live.mp3");
        qputenv("HOME", folder.path().c_str());
        qunsetenv("XDG_CONFIG_HOME");
    }

    ~QtDialogsTest() override {
        EXPECT_TRUE(turnUntil([] {
            const QWidgetList widgets = QApplication::topLevelWidgets();
            return std::none_of(widgets.begin(), widgets.end(),
                                [](const QWidget* widget) { return widget->inherits("QDialog"); });
        })) << "a dialog was never deleted";
    }

    std::vector<std::string> open(const OpenOptions& options, std::function<void(QDialog*)> act) {
        whileOpen(std::move(act));
        return paths(dialogs().chooseToOpen(options));
    }
    /// Opens the dialog for music folders, which accepts files and folders.
    std::vector<std::string> add(std::function<void(QDialog*)> act) {
        return open({.files = true,
                     .folders = true,
                     .several = true,
                     .types = {{}, {"mp3", "wav"}},
                     .prompt = "Add Music"},
                    std::move(act));
    }
    std::string save(const SaveOptions& options, std::function<void(QDialog*)> act) {
        whileOpen(std::move(act));
        const auto chosen = dialogs().chooseToSave(options);
        return chosen ? chosen->path : std::string("none");
    }

    QtDialogs& dialogs() {
        if (!dialogs_)
            dialogs_ = std::make_unique<QtDialogs>(); // after HOME is set
        return *dialogs_;
    }

    std::string path(const char* name) const { return folder.path(name); }
    QString text(const char* name) const { return QString::fromStdString(path(name)); }

    TemporaryFolder folder;

private:
    std::unique_ptr<QtDialogs> dialogs_;
};

using Act = std::function<void(QDialog*)>;

void confirm(QDialog* dialog, const char* prompt = "Add Music") {
    QPushButton* confirming = button(dialog, prompt);
    ASSERT_TRUE(confirming && confirming->isEnabled());
    QTest::mouseClick(confirming, Qt::LeftButton);
}

Act typing(const QString& text) {
    return [=](QDialog* dialog) { type(dialog, text); };
}

Act marking(const QStringList& marked) {
    return [=](QDialog* dialog) {
        for (const QString& name : marked)
            click(dialog, name, name == marked.front() ? Qt::NoModifier : Qt::ControlModifier);
        confirm(dialog);
    };
}

/// Types a path, expects a plain text that mentions `expected`, and answers it with Return or with Yes.
Act typingAndAnswering(const QString& text, const QString& expected, bool withYes = false) {
    return [=](QDialog* dialog) {
        bool asked = false;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(openDialog());
            ASSERT_NE(box, nullptr);
            asked = true;
            EXPECT_TRUE(box->text().contains(expected)) << box->text().toStdString();
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            if (withYes)
                box->button(QMessageBox::Yes)->click();
            else
                QTest::keyClick(box, Qt::Key_Return);
        });
        type(dialog, text);
        EXPECT_TRUE(asked) << text.toStdString();
    };
}

TEST_F(QtDialogsTest, AnswersWithWhatWasMarkedOrTypedLast) {
    const std::string song = path("House/Night Band - Last Train Home.mp3");
    const struct {
        const char* quirk;
        Act act;
        std::vector<std::string> chosen;
    } cases[] = {
        {"files and folders together",
         marking({"House", "Live.mp3", "Slow.MP3"}),
         {path("House"), path("Live.mp3"), path("Slow.MP3")}},
        {"typed after marking",
         [&](QDialog* dialog) {
             click(dialog, "Slow.MP3");
             EXPECT_EQ(nameField(dialog)->text(), "Slow.MP3");
             type(dialog, text("House"));
         },
         {path("House")}},
        {"marked after typing",
         [](QDialog* dialog) {
             nameField(dialog)->setFocus();
             QTest::keyClicks(nameField(dialog), "nonsense");
             marking({"House"})(dialog);
         },
         {path("House")}},
        {"a folder with a slash behind it", typing(text("House") + "/"), {path("House")}},
        {"a name in the shown folder", typing("House"), {path("House")}},
        {"a path with blanks around it", typing("  " + text("House") + " "), {path("House")}},
        {"several in quotation marks", typing("\"House\" \"Fast.wav\""), {path("House"), path("Fast.wav")}},
        {"home", typing("~/House"), {path("House")}},
        {"a double click enters a folder, which is chosen when nothing is marked",
         [](QDialog* dialog) {
             click(dialog, "House", {}, true);
             EXPECT_TRUE(
                 turnUntil([&] { return names(dialog) == QStringList{"Night Band - Last Train Home.mp3"}; }));
             confirm(dialog);
         },
         {path("House")}},
        {"the next dialog opens where the last one ended",
         marking({"Night Band - Last Train Home.mp3"}),
         {song}},
        {"a name where the last path led", typing("Night Band - Last Train Home.mp3"), {song}},
    };
    for (const auto& row : cases)
        EXPECT_THAT(add(row.act), testing::UnorderedElementsAreArray(row.chosen)) << row.quirk;
}

TEST_F(QtDialogsTest, HidesWhatTheTypesLeaveOutAndExplainsWhatCannotBeChosen) {
    folder.write("12\" Mix.mp3", "x");
    EXPECT_THAT(
        open({.types = {{}, {"mp3"}}},
             [](QDialog* dialog) {
                 EXPECT_TRUE(turnUntil([&] {
                     return names(dialog) == QStringList({"12\" Mix.mp3", "House", "Live.mp3", "Slow.MP3"});
                 })) << "upper case is the same type, and folders stay";
                 EXPECT_FALSE(button(dialog, "Open")->isEnabled());
                 click(dialog, "12\" Mix.mp3");
                 confirm(dialog, "Open");
             }),
        ElementsAre(path("12\" Mix.mp3")));
    for (const char* name : {"Notes <b>bold.txt", "missing.mp3"})
        EXPECT_THAT(add(typingAndAnswering(text(name), text(name))), IsEmpty());
    EXPECT_THAT(open({}, typing(text("House"))), IsEmpty()) << "a folder is no file";
}

TEST_F(QtDialogsTest, AnswersANonBlockingDialogLaterAndOnce) {
    std::vector<std::vector<std::string>> answers;
    const auto answer = [&](const std::vector<Location>& locations) { answers.push_back(paths(locations)); };
    OpenOptions options;
    options.types.extensions = {"wav"};
    dialogs().chooseToOpenLater(options, answer);
    EXPECT_THAT(answers, IsEmpty());
    QDialog* dialog = openDialog();
    ASSERT_NE(dialog, nullptr);
    EXPECT_FALSE(dialog->isModal());
    type(dialog, text("Fast.wav"));
    EXPECT_TRUE(turnUntil([&] { return answers.size() == 1; }));
    dialogs().chooseToOpenLater(options, answer);
    openDialog()->close();
    turnFor(std::chrono::milliseconds(20));
    EXPECT_THAT(answers, ElementsAre(ElementsAre(path("Fast.wav")), IsEmpty()));
}

TEST_F(QtDialogsTest, ReadsTheNameToSaveUnderAsOneName) {
    const struct {
        const char* quirk;
        Act act;
        std::string chosen;
        std::vector<std::string> extensions = {};
    } cases[] = {
        {"the one allowed extension is added", typing("wedding 12.9"), path("wedding 12.9.m3u"), {"m3u"}},
        {"a quotation mark in the name", typing("12\" Classics.m3u"), path("12\" Classics.m3u")},
        {"quotation marks as for several names", typing("\"Best\" \"80s\""), path("\"Best\" \"80s\"")},
        {"Return keeps a file", typingAndAnswering("Fast.wav", "Fast.wav"), "none"},
        {"Yes replaces it", typingAndAnswering("Fast.wav", "Fast.wav", true), path("Fast.wav")},
        {"a folder that is missing", typingAndAnswering(text("missing/a.m3u"), "missing"), "none"},
        {"home", typing("~/House/evening"), path("House/evening")},
        {"a folder is entered", typing(text("House")), "none"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(save({.proposedName = "playlist.m3u", .types = {{}, row.extensions}}, row.act), row.chosen)
            << row.quirk;
    EXPECT_EQ(
        save(
            {.proposedName = "evening.m3u", .title = "Save <b>Playlist</b>", .message = "Pick a <i>name</i>"},
            [](QDialog* dialog) {
                EXPECT_EQ(nameField(dialog)->text(), "evening.m3u");
                EXPECT_EQ(dialog->windowTitle(), "Save <b>Playlist</b>");
                EXPECT_TRUE(std::ranges::any_of(dialog->findChildren<QLabel*>(), [](const QLabel* label) {
                    return label->isVisible() && label->text() == "Pick a <i>name</i>";
                }));
                QTest::keyClick(nameField(dialog), Qt::Key_Return);
            }),
        path("House/evening.m3u"));
}

TEST_F(QtDialogsTest, RemembersAFolderForEachKindOfFileAcrossRestarts) {
    const std::string memory = folder.path("dialogs.ini");
    folder.makeFolder("Lists");
    const auto shown = [&](FileKind kind) {
        QtDialogs restarted(memory);
        std::string place;
        whileOpen([&](QDialog* dialog) {
            place = qobject_cast<QFileDialog*>(dialog)->directory().path().toStdString();
        });
        restarted.chooseToSave({.kind = kind});
        return place;
    };
    whileOpen(typing(text("House/Night Band - Last Train Home.mp3")));
    EXPECT_EQ(QtDialogs(memory).chooseToOpen({.kind = FileKind::music}).size(), 1U);
    whileOpen(typing(text("Lists/a.m3u")));
    EXPECT_TRUE(QtDialogs(memory).chooseToSave({.kind = FileKind::playlist}));
    EXPECT_EQ(shown(FileKind::music), path("House"));
    EXPECT_EQ(shown(FileKind::playlist), path("Lists"));
    EXPECT_EQ(shown(FileKind::sessionOrLibrary), folder.path());
    ASSERT_TRUE(QDir().rmdir(text("Lists")));
    EXPECT_EQ(shown(FileKind::playlist), folder.path()) << "the folder is gone";
}

TEST_F(QtDialogsTest, OpensInTheFirstFolderThatExistsUnderTheTitleAsked) {
    open({.title = "Browse for file: A\n– T", .openIn = {Location{path("missing")}, Location{path("House")}}},
         [&](QDialog* dialog) {
             EXPECT_EQ(qobject_cast<QFileDialog*>(dialog)->directory().path(), text("House"));
             EXPECT_EQ(dialog->windowTitle(), "Browse for file: A – T");
         });
    folder.makeFolder("Musica e grabaciones");
    folder.write(".config/user-dirs.dirs", "XDG_MUSIC_DIR=\"$HOME/Musica e grabaciones\"\n");
    open({}, [](QDialog* dialog) {
        const auto* sideBar = dialog->findChild<QAbstractItemView*>("sidebar");
        EXPECT_TRUE(turnUntil([&] { return sideBar->model()->rowCount() >= 3; }));
        EXPECT_GE(sideBar->viewport()->width(), sideBar->sizeHintForColumn(0)) << "names are shown in full";
    });
}

TEST_F(QtDialogsTest, AnswersAQuestionWithCancelUnlessItIsAcceptedAndShowsPlainText) {
    const auto ask = [&](Act act) {
        whileOpen(std::move(act));
        return dialogs().confirm("Load the library?", "It replaces <b>everything</b>.", "Load Library");
    };
    EXPECT_TRUE(ask([](QDialog* dialog) { button(dialog, "Load Library")->click(); }));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape})
        EXPECT_FALSE(ask([=](QDialog* dialog) { QTest::keyClick(dialog, key); }));

    bool seen = false;
    whileOpen([&](QDialog* dialog) {
        QStringList lines;
        for (const QLabel* label : dialog->findChildren<QLabel*>()) {
            lines.append(label->text());
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
        }
        EXPECT_TRUE(lines.contains("Library <b>Refreshed</b>"));
        EXPECT_TRUE(lines.contains("One & two"));
        EXPECT_EQ(dialog->findChildren<QPushButton*>().size(), 1);
        confirm(dialog, "OK");
        seen = !dialog->isVisible();
    });
    dialogs().showMessage("Library <b>Refreshed</b>", "One & two");
    EXPECT_TRUE(seen);
}

} // namespace
} // namespace orvalen::test
