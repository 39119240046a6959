// SPDX-License-Identifier: MIT
#pragma once

#include "view/MainControls.h"

#include <QActionGroup>
#include <QFrame>
#include <QMainWindow>
#include <QMap>
#include <QTabBar>
#include <QToolBar>

namespace ostrel {

class Frame;
class Led;
class Quillchart;

/// The main window of the program. It builds its controls from tables, owns them and lays them out. It has no rules:
/// for each action of the operator it calls a function that others have set.
class frmMain : public QMainWindow {
    Q_OBJECT
public:
    frmMain();

    /// A menu item or a toolbar button, by its name. `setChecked` presses a button without running its command.
    QAction *action(const QString &name) const { return actions_.value(name); }

    const Charts &charts() const { return charts_; }
    Quillchart &chart(int index) const { return *quillcharts_[index]; }
    const AxisControls &axis() const { return axis_; }
    const TimeControls &time() const { return time_; }
    const std::array<ScrollEntry *, tabCount> &ScrollChart() const { return ScrollChart_; }
    QTabBar &TabChart() const { return *TabChart_; }

    /// A menu item or a button was clicked, with its name; a check button's state is already that after the click.
    std::function<void(const QString &control)> clicked;
    /// The window was moved, resized, maximised or minimised.
    std::function<void()> placed;
    /// Called when the window is about to close; false keeps it open.
    std::function<bool()> QueryUnload;

    /// Shows the window and waits until it has its place on the screen, so that dialogs appear over it.
    void comeUp();
    /// Over the windows of other programs, as far as the window manager lets it.
    void comeToFront();
    void setLed(bool on);
    /// The window's icon, as in the task bar, bears a red dot while a recording is on.
    void showRecording(bool on);
    /// Shows one of the five charts with its bar and hides the others.
    void bringToFront(int chart);
    void focusChart();
    /// In twips, in the window's font.
    float TextWidth(const QString &text) const;
    /// Sets the outer size in twips; it is at least what the panels need.
    void setOuterSize(float Width, float Height);

Q_SIGNALS:
    /// Files were dropped on the window. The program that they come from waits until the drop is over: whatever there
    /// is to ask or to read must come later, by a queued connection.
    void filesDropped(const QStringList &files);

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void buildMenus();
    void buildToolbar();
    void buildTabs();
    void buildPanels();
    QAction *addAction(QAction *action, const QString &name);
    void press(const QString &control) const;
    void tellPlaced() const;
    QSize frameExtent() const { return frameGeometry().size() - size(); }
    void holdLeastSize();
    void ArrangeMainWindow();

    QWidget *inner_;
    QToolBar *Toolsbar_;
    QFrame *page_;
    QTabBar *TabChart_;
    Frame *FrameScaleAxis_ = nullptr;
    Frame *frameLeds_ = nullptr;
    Led *ShapeReciveLed_ = nullptr;
    QMap<QString, QAction *> actions_;
    std::array<Quillchart *, chartInstances> quillcharts_{};
    Charts charts_{};
    AxisControls axis_;
    TimeControls time_;
    std::array<ScrollEntry *, tabCount> ScrollChart_{};
    int front_ = recorderChart;
    bool recording_ = false; ///< shown by the icon
};

} // namespace ostrel
