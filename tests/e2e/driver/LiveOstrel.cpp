// SPDX-License-Identifier: MIT
#include "LiveOstrel.h"

#include "app/Ostrel.h"
#include "forms/Shapes.h"

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
#include <utility>

using namespace std::chrono_literals;
using namespace inside;

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

} // namespace

QObject *inside::reach(const QString &name) {
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

void LiveOstrel::stopInstrument() {
    instrument_.reset();
    QFile::remove(own("instrument"));
}

void LiveOstrel::startRecorder(const QString &firstWindow, unsigned user) {
    if (user != 0) // the line itself, to which a link leads, stays whose it is
        Child([&] { return become({"/bin/chown", "-Rh", QString::number(user), file("")}); }).endsWithin(10s);
    int ends[2] = {-1, -1};
    const timeval longest{.tv_sec = patience.count(), .tv_usec = 0};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0 ||
        ::setsockopt(ends[0], SOL_SOCKET, SO_RCVTIMEO, &longest, sizeof longest) != 0)
        throw std::runtime_error("there is no line to the recorder");
    const Descriptor theirs(ends[1]);
    const auto record = [&] {
        profile_->enter();
        return serve(theirs.get());
    };
    recorder_.emplace(record, user);
    line_.reset(ends[0]);
    await(firstWindow);
}

int LiveOstrel::serve(int line) {
    static const int asked = line;
    qAddPreRoutine([] {
        auto *bell = new QSocketNotifier(asked, QSocketNotifier::Read, qApp);
        QObject::connect(bell, &QSocketNotifier::activated, [] { answerQuestion(asked); });
    });
    char name[] = "ostrel";
    char *arguments[] = {name, nullptr};
    return runOstrel(1, arguments);
}

void LiveOstrel::answerQuestion(int line) {
    const QVariantList parts = receive(line).toList();
    send(line, reinterpret_cast<Question>(parts[0].toULongLong())(parts[1].toStringList()));
    if (const auto work = std::exchange(afterwards, nullptr))
        work();
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
        afterwards = [object] {
            if (auto *command = qobject_cast<QAction *>(object))
                command->trigger();
            else if (auto *widget = qobject_cast<QWidget *>(object)) // at the left, where an option's circle is too
                QTest::mouseClick(widget, Qt::LeftButton, {},
                                  {std::min(10, widget->width() / 2), widget->height() / 2});
        };
        return object != nullptr;
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
            afterwards = [entry] { QTest::keyClick(entry, Qt::Key_Return); };
        }
        return !entry;
    };
    act(taken, {file(name)});
}

void LiveOstrel::takeName() {
    await("frmLogName");
    press("OK");
}

void LiveOstrel::chooseLog() {
    type("lstLogFiles", " ");
    press("cmdRecoverButton");
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

bool LiveOstrel::isLinked() {
    return ask([](auto) { return find<Led>("ShapeReciveLed").FillColor() == QColor(0, 255, 0); });
}

bool LiveOstrel::isEnabled(const QString &command) {
    return ask([](const QStringList &given) { return find<QAction>(given[0]).isEnabled(); }, {command});
}

QStringList LiveOstrel::samples(int chart) {
    return ask(chart, [](auto &shown) {
        QStringList samples;
        for (const QVariant &pair : shown.samples(0, shown.SampleCount()))
            samples += sampleText(pair.toList()[0].toFloat(), pair.toList()[1].toFloat());
        return samples;
    });
}

QString LiveOstrel::marks(int chart) {
    return ask(chart, [](auto &shown) {
        QStringList labels;
        for (const QVariant &mark : shown.marks())
            labels += mark.toMap()["Label"].toString();
        return labels.join(' ');
    });
}

QString LiveOstrel::sampleText(float uv, float cond) {
    return QString::number(double(uv), 'g', 9) + '\t' + QString::number(double(cond), 'g', 9);
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
