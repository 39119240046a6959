// SPDX-License-Identifier: MIT
#include "LiveOstrel.h"

#include "app/Ostrel.h"

#include <QAction>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QSocketNotifier>
#include <QtTest/QTest>
#include <sys/socket.h>

#include <algorithm>
#include <stdexcept>

using namespace std::chrono_literals;

namespace {

constexpr auto patience = 20s;

void send(int line, const QVariant &message) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << message;
    ::send(line, bytes.constData(), std::size_t(bytes.size()), MSG_NOSIGNAL);
}

QVariant receive(int line) {
    QByteArray bytes(200000, Qt::Uninitialized); // a socket takes that much at once
    const ssize_t size = ::recv(line, bytes.data(), std::size_t(bytes.size()), 0);
    if (size <= 0)
        throw std::runtime_error("the recorder does not answer");
    bytes.truncate(size);
    QVariant message;
    QDataStream stream(bytes);
    stream >> message;
    return message;
}

/// What an operator can get at, by its name or by the text on it: it is shown and enabled, and in the modal window
/// where there is one. None if he cannot.
QObject *reach(const QString &name) {
    QWidget *modal = QApplication::activeModalWidget();
    for (const QWidget *window : modal ? QWidgetList{modal} : QApplication::topLevelWidgets()) {
        for (QObject *object : window->findChildren<QObject *>()) {
            const QString text = object->property("text").toString().remove('&');
            if ((object->objectName() == name || text == name) && object->property("enabled").toBool() &&
                object->property("visible").toBool())
                return object;
        }
    }
    return nullptr;
}

} // namespace

LiveOstrel::LiveOstrel(const QByteArray &script, const QStringList &simulatorOptions) {
    startInstrument(script, simulatorOptions);
    startRecorder();
    takeName();
}

LiveOstrel::LiveOstrel(const QByteArray &script, const LiveOstrel &first) : profile_(first.profile_), port_(2) {
    startInstrument(script);
    startRecorder("frmSetup");
    press("optCom(1)");
    press("OK");
    takeName();
}

void LiveOstrel::startInstrument(const QByteArray &script, const QStringList &options) {
    profile_->write(QString{"script%1"}.arg(port_), script);
    const QStringList files{own("script"), "--link", own("instrument"), "--truth", own("truth")};
    instrument_.emplace([&] { return become(QStringList{SIMULATOR_PROGRAM} + options + files); });
    if (!within(10s, [&] { return QFile::exists(own("instrument")); }))
        throw std::runtime_error("the simulated instrument does not start");
}

void LiveOstrel::startRecorder(const QString &firstWindow) {
    int ends[2] = {-1, -1};
    const timeval longest{.tv_sec = patience.count(), .tv_usec = 0};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0 ||
        ::setsockopt(ends[0], SOL_SOCKET, SO_RCVTIMEO, &longest, sizeof longest) != 0)
        throw std::runtime_error("there is no line to the recorder");
    const Descriptor theirs(ends[1]);
    recorder_.emplace([&] {
        profile_->enter();
        return serve(theirs.get());
    });
    line_.reset(ends[0]);
    await(firstWindow);
}

int LiveOstrel::serve(int line) {
    static const int asked = line;
    qAddPreRoutine([] {
        auto *bell = new QSocketNotifier(asked, QSocketNotifier::Read, qApp);
        QObject::connect(bell, &QSocketNotifier::activated, [] {
            const QVariantList parts = receive(asked).toList();
            send(asked, reinterpret_cast<Question>(parts[0].toULongLong())(parts[1].toStringList()));
        });
    });
    char name[] = "ostrel";
    char *arguments[] = {name, nullptr};
    return runOstrel(1, arguments);
}

/// The recorder is a fork: its functions are where ours are.
QVariant LiveOstrel::exchange(Question question, const QStringList &given) {
    send(line_.get(), QVariantList{reinterpret_cast<qulonglong>(question), given});
    return receive(line_.get());
}

void LiveOstrel::act(Question work, const QStringList &given) {
    if (!within(patience, [&] { return exchange(work, given).toBool(); }))
        throw std::runtime_error((given + windows()).join(", ").toStdString() + ": not to be got at");
}

void LiveOstrel::press(const QString &name) {
    const auto pressed = [](const QStringList &given) -> QVariant {
        QObject *object = reach(given[0]);
        const char *slot = qobject_cast<QAction *>(object) ? "trigger" : "click";
        // Behind the answer, for it may open a dialog.
        return object && QMetaObject::invokeMethod(object, slot, Qt::QueuedConnection);
    };
    act(pressed, {name});
}

void LiveOstrel::type(const QString &widget, const QString &text) {
    const auto typed = [](const QStringList &given) -> QVariant {
        auto *entry = qobject_cast<QWidget *>(reach(given[0]));
        if (!entry)
            return false;
        entry->setFocus();
        QTest::keyClick(entry, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(entry, given[1]);
        return true;
    };
    act(typed, {widget, text});
}

void LiveOstrel::nameFile(const QString &name) {
    await("ComDlg");
    // The dialog opens no file before it has read the folder.
    const auto taken = [](const QStringList &given) -> QVariant {
        auto *entry = qobject_cast<QLineEdit *>(reach("fileNameEdit"));
        if (entry) {
            entry->setText(given[0]);
            QMetaObject::invokeMethod(
                entry, [entry] { QTest::keyClick(entry, Qt::Key_Return); }, Qt::QueuedConnection);
        }
        return !entry;
    };
    act(taken, {file(name)});
}

void LiveOstrel::takeName() {
    await("frmLogName");
    press("OK");
}

void LiveOstrel::recover(const QString &name) {
    startRecorder("frmDataRecovery");
    type("lstLogFiles", " ");
    press("cmdRecoverButton");
    nameFile(name);
    takeName();
}

QStringList LiveOstrel::windows() {
    return ask([](auto) {
        QStringList shown;
        for (const QWidget *window : QApplication::topLevelWidgets()) {
            const auto *box = qobject_cast<const QMessageBox *>(window);
            if (window->isVisible())
                shown += box ? box->text() : window->objectName();
        }
        return shown;
    });
}

void LiveOstrel::await(const QString &window) {
    if (!within(patience, [&] { return isUp(window); }))
        throw std::runtime_error((window + " does not come up, but " + windows().join(", ")).toStdString());
}

bool LiveOstrel::isEnabled(const QString &command) {
    return ask([](const QStringList &given) { return find<QAction>(given[0])->isEnabled(); }, {command});
}

QStringList LiveOstrel::texts(const SampleStore &samples) {
    QStringList texts;
    for (qint64 i = 0; i < samples.size(); ++i)
        texts << QString::number(double(samples.at(i).uv), 'g', 9) + '\t' +
                     QString::number(double(samples.at(i).cond), 'g', 9);
    return texts;
}

QStringList LiveOstrel::entries(const QString &folder) const {
    return QDir(file("data/ostrel/" + folder)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
}

QStringList LiveOstrel::meant() const {
    QFile record{own("truth")};
    if (!record.open(QIODevice::ReadOnly))
        throw std::runtime_error("the instrument keeps no record");
    QStringList meant;
    for (const QString &line : QString::fromUtf8(record.readAll()).split('\n', Qt::SkipEmptyParts)) {
        const QStringList row = line.split('\t');
        meant += row[1] == "sample" ? row[6] + '\t' + row[7] : row[1];
    }
    return meant;
}
