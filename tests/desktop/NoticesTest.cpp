// SPDX-License-Identifier: MIT
#include "desktop/BoxAlert.h"
#include "desktop/DBusNotices.h"
#include "desktop/OwnBus.h"

#include <QDBusConnection>
#include <QDialog>
#include <QTest>
#include <QVariantMap>
#include <gtest/gtest.h>

#include <map>

using namespace ostrel;

namespace {

/// The desktop's service: what it shows, by its numbers.
class Service : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QString shown() const {
        QString all;
        for (const auto &[id, words] : notices)
            all += QStringLiteral("%1 %2;").arg(id).arg(words);
        return all;
    }

    std::map<uint, QString> notices;

public Q_SLOTS:
    uint Notify(const QString &, uint replaces, const QString &, const QString &title, const QString &text,
                const QStringList &, const QVariantMap &hints, int) {
        const uint id = replaces != 0 ? replaces : ++last_;
        notices[id] = QStringLiteral("%1/%2/%3").arg(title, text).arg(hints.value("urgency").toInt());
        return id;
    }
    void CloseNotification(uint id) { notices.erase(id); }

Q_SIGNALS:
    void ActionInvoked(uint id, const QString &action);

private:
    uint last_ = 0;
};

TEST(DBusNoticesTest, aNoticeIsShownReplacedAndWithdrawnInWhateverOrderTheAnswersCome) {
    const OwnBus own;
    if (!own.isUp())
        GTEST_SKIP() << "no dbus-daemon";
    Service service;
    QDBusConnection bus = own.with(service, "/org/freedesktop/Notifications", "service");
    DBusNotices notices([&] { return own.connection("notices"); });
    const auto expectShown = [&](const QString &expected) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return service.shown() == expected; }, 3000)) << qPrintable(service.shown());
    };
    notices.show(News::LinkLost, "nobody", "listens"); // there is no service yet
    QTest::qWait(300);
    ASSERT_TRUE(bus.registerService("org.freedesktop.Notifications"));

    notices.show(News::RunEnded, "A", "a");
    notices.show(News::LinkLost, "B", "b");
    expectShown("1 A/a/1;2 B/b/2;");
    notices.show(News::RunEnded, "C", "c");
    notices.withdraw(News::RunEnded); // before it has a number
    notices.withdraw(News::LinkLost);
    expectShown("");
    notices.show(News::RunEnded, "D", "d");
    expectShown("3 D/d/1;");

    int chosen = 0;
    notices.chosen = [&] { ++chosen; };
    for (const uint id : {3U, 99U}) // the latter is another program's
        Q_EMIT service.ActionInvoked(id, "default");
    EXPECT_TRUE(QTest::qWaitFor([&] { return chosen > 0; }, 3000));
    QTest::qWait(50);
    EXPECT_EQ(chosen, 1);
    notices.show(News::RunEnded, "E", "e"); // to nobody
}

TEST(BoxAlertTest, aBoxThatComesUpBehindAnotherProgramCallsByTheWindowInTheTaskBar) {
    std::vector<QWidget *> called;
    const BoxAlert alert([&](QWidget &window) { called.push_back(&window); });
    QWidget window;
    window.show();
    QApplication::setActiveWindow(nullptr);
    {
        QDialog box(&window);
        box.setModal(true);
        box.show();
        EXPECT_EQ(called, std::vector<QWidget *>{&window});
        QApplication::setActiveWindow(&box);
        QDialog second(&box); // by the operator's click
        second.setModal(true);
        second.show();
    }
    QApplication::setActiveWindow(nullptr);
    window.hide();
    QDialog first; // of the start
    first.setModal(true);
    first.show();
    QTest::qWait(1);
    EXPECT_EQ(called, (std::vector<QWidget *>{&window, &first}));
}

} // namespace

#include "NoticesTest.moc"
