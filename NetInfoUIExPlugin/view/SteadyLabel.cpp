#include "view/SteadyLabel.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QLabel>

#include <cmath>
#include <optional>

namespace view {

namespace {

    const char kHolder[] = "netinfoSteadySize";

    void release(QLabel* label)
    {
        label->setMinimumSize(0, 0);
        label->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    }

    // What a held label keeps to tell cheaply whether a text fits: the size
    // hint shapes and breaks the text into lines (about five times the cost of
    // its advance), so only a text that may not fit is measured that way.
    class Holder final : public QObject
    {
    public:
        explicit Holder(QLabel* label)
            : QObject(label)
        {
            setObjectName(QLatin1String(kHolder));
            label->installEventFilter(this);
        }

        // Width of the text's advance, rounded up.
        int advance(const QLabel* label, const QString& text)
        {
            if (!m_metrics)
                m_metrics.emplace(label->font());
            return int(std::ceil(m_metrics->horizontalAdvance(text)));
        }

        int extra = 0; // the hint's width beyond the text's advance: margins, indent

        // A new font or style changes the size hint, but only once the label has
        // handled the event: let go of the held size so the next text fits it afresh.
        bool eventFilter(QObject* watched, QEvent* event) override
        {
            if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
                release(static_cast<QLabel*>(watched));
                m_metrics.reset();
            }
            return false;
        }

    private:
        std::optional<QFontMetricsF> m_metrics;
    };

    Holder* holderOf(QLabel* label)
    {
        return static_cast<Holder*>(
            label->findChild<QObject*>(QLatin1String(kHolder), Qt::FindDirectChildrenOnly));
    }

    bool held(const QLabel* label)
    {
        return label->minimumSize() == label->maximumSize();
    }

    // Holds the label at least at `size`; its hint is never less than its
    // minimum size, which only matters where the hint is smaller anyway.
    void hold(QLabel* label, Holder* holder, QSize size)
    {
        const QSize hint = label->sizeHint();
        holder->extra = hint.width() - holder->advance(label, label->text());
        label->setFixedSize(size.expandedTo(hint));
    }

} // namespace

void setSteadyText(QLabel* label, const QString& text)
{
    if (!label)
        return;
    const bool changed = label->text() != text;
    if (changed)
        label->setText(text);
    Holder* holder = holderOf(label);
    if (!holder || !held(label)) {
        refitSteady(label);
        return;
    }
    if (!changed)
        return;
    // One line of text keeps its height; the hint's width is its advance
    // rounded up, plus what the label adds around it.
    const QSize size = label->minimumSize();
    if (!text.contains(QLatin1Char('\n')) && holder->advance(label, text) + holder->extra <= size.width())
        return;
    hold(label, holder, size);
}

void refitSteady(QLabel* label)
{
    if (!label)
        return;
    Holder* holder = holderOf(label);
    if (!holder)
        holder = new Holder(label);
    // QLabel's size hint is never less than its minimum size.
    release(label);
    hold(label, holder, QSize(0, 0));
}

} // namespace view
