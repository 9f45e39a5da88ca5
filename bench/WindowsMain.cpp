// SPDX-License-Identifier: MIT
// The editor in Qt's off-screen windows.
#include "Stopwatch.h"
#include "WindowBench.h"

#include <KestrinProductEditor/ProductEditorDlg.h>

#include <QApplication>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <cstdlib>
#include <functional>
#include <utility>

using namespace KestrinProductEditor;
using namespace KestrinProductEditor::Bench;

namespace {

/// Tells when the list of the editor was painted for the first time.
class FirstPaint final : public QObject
{
public:
    explicit FirstPaint(std::function<void(QTableView&)> then) : m_then(std::move(then))
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Paint)
            return false;
        auto* const list = qobject_cast<QTableView*>(watched->parent());
        if (list == nullptr || watched != list->viewport() || list->objectName() != "flexGrid")
            return false;
        QCoreApplication::instance()->removeEventFilter(this);
        QTimer::singleShot(0, list, [this, list] { m_then(*list); });
        return false;
    }

private:
    std::function<void(QTableView&)> m_then;
};

class EditorList final : public IEditorList
{
public:
    explicit EditorList(QTableView& view) : m_view(view) { view.setFocus(); }

    void ScrollPage() override
    {
        m_view.verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
        PrvPaint();
    }
    void StepDown() override
    {
        QTest::keyClick(&m_view, Qt::Key_Down);
        PrvPaint();
    }
    void SelectAll() override
    {
        QTest::keyClick(&m_view, Qt::Key_A, Qt::ControlModifier);
        PrvPaint();
    }
    void JumpToBothEnds() override
    {
        QTest::keyClick(&m_view, Qt::Key_Home);
        QTest::keyClick(&m_view, Qt::Key_End);
        PrvPaint();
    }
    [[nodiscard]] std::int32_t SelectedRows() const override
    {
        std::int32_t rows = 0;
        for (const QItemSelectionRange& range : m_view.selectionModel()->selection())
            rows += range.height();
        return rows;
    }
    [[nodiscard]] std::int32_t CurrentRow() const override { return m_view.currentIndex().row() + 1; }

private:
    void PrvPaint()
    {
        QApplication::processEvents();
        m_view.viewport()->repaint();
    }

    QTableView& m_view;
};

void ShowEditor(const std::filesystem::path& folder)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("QT_LOGGING_RULES", "*=false", 1);
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    int noArguments = 0;
    const QApplication application(noArguments, nullptr);
    const auto editor = ProductEditorDlg::Create();
    const Stopwatch watch;
    const FirstPaint firstPaint([&](QTableView& view) {
        const double opened = watch.Microseconds();
        EditorList list(view);
        AnswerForEditor(opened, list);
    });
    editor->Show(Variant());
}

} // namespace

int main(int argc, char* argv[])
{
    return RunWindowBench(
        {.program = "kstnedit-window-bench", .mostOpenings = 1.2, .showEditor = &ShowEditor}, argc, argv);
}
