// SPDX-License-Identifier: MIT
#include "inspector/qorvaluelisteditor.h"

#include <QApplication>
#include <QAbstractTableModel>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStaticText>
#include <QtMath>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QTimer>
#include <QToolButton>

// ---- The grid's model and in-place editors -----------------------------

// Row n is line n of the strings: the name in the first column, the value
// in the second.
class QorValueListModel : public QAbstractTableModel
{
public:
    QorValueListModel(TValueListEditor *Grid, TValueListStrings *Strings)
        : QAbstractTableModel(Grid)
        , m_grid(Grid)
        , m_strings(Strings)
    {
        connect(Strings, &TValueListStrings::Changed, this, [this] {
            beginResetModel();
            endResetModel();
        });
        connect(Strings, &TValueListStrings::LineChanged, this,
                [this](int Row) { Q_EMIT dataChanged(index(Row, 0), index(Row, 1)); });
    }

    int rowCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : m_strings->Count(); }
    int columnCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : 2; }

    QVariant data(const QModelIndex &index, int role) const override
    {
        if (!index.isValid())
            return {};
        // A value that cannot be written reads greyed, as a disabled
        // control's text does.
        if (role == Qt::ForegroundRole && index.column() == 1 && m_strings->ItemProps(index.row()).Locked)
            return m_grid->palette().brush(QPalette::Disabled, QPalette::Text);
        if (role != Qt::DisplayRole && role != Qt::EditRole)
            return {};
        return index.column() == 0 ? m_strings->Names(index.row()) : m_strings->ValueFromIndex(index.row());
    }

    Qt::ItemFlags flags(const QModelIndex &index) const override
    {
        if (!index.isValid())
            return Qt::NoItemFlags;
        Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
        if (index.column() == 1) {
            const TItemProp props = m_strings->ItemProps(index.row());
            // A read-only line with a dialog still shows its button.
            if (!props.Locked && (!props.ReadOnly || props.EditStyle == esEllipsis))
                flags |= Qt::ItemIsEditable;
        }
        return flags;
    }

    bool setData(const QModelIndex &index, const QVariant &value, int role) override
    {
        if (!index.isValid() || index.column() != 1 || role != Qt::EditRole)
            return false;
        const int row = index.row();
        if (m_strings->ItemProps(row).ReadOnly || m_strings->ValueFromIndex(row) == value.toString())
            return false;
        m_strings->SetValueFromIndex(row, value.toString());
        // Validated once the editor has finished with this line: writing
        // the value may rebuild every line and every editor with them.
        QPointer<TValueListEditor> grid = m_grid;
        QTimer::singleShot(0, m_grid, [grid, row] {
            if (grid)
                grid->ValidateLine(row);
        });
        return true;
    }

private:
    TValueListEditor *m_grid;
    TValueListStrings *m_strings;
};

// The value cell's editor for each edit style.
class QorValueListDelegate : public QStyledItemDelegate
{
public:
    explicit QorValueListDelegate(TValueListEditor *Grid)
        : QStyledItemDelegate(Grid)
        , m_grid(Grid)
    {
    }

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &index) const override
    {
        const TItemProp props = m_grid->Strings()->ItemProps(index.row());
        switch (props.EditStyle) {
        case esPickList: {
            auto *combo = new QComboBox(parent);
            combo->setObjectName(QStringLiteral("qor_inplace_picklist"));
            combo->setEditable(!props.ReadOnly);
            // A typed value is checked when written, never added to the list.
            combo->setInsertPolicy(QComboBox::NoInsert);
            combo->addItems(props.PickList);
            combo->setFrame(false);
            // A pick takes effect at once.
            connect(combo, &QComboBox::activated, this, [this, combo] {
                auto *self = const_cast<QorValueListDelegate *>(this);
                Q_EMIT self->commitData(combo);
                m_grid->InplaceEditorOnChange(combo);
            });
            return combo;
        }
        case esEllipsis: {
            auto *box = new QWidget(parent);
            box->setObjectName(QStringLiteral("qor_inplace_ellipsis"));
            box->setAutoFillBackground(true);
            auto *layout = new QHBoxLayout(box);
            layout->setContentsMargins(0, 0, 0, 0);
            layout->setSpacing(0);
            auto *edit = new QLineEdit(box);
            edit->setObjectName(QStringLiteral("qor_inplace_edit"));
            edit->setFrame(false);
            edit->setReadOnly(props.ReadOnly);
            auto *button = new QToolButton(box);
            button->setObjectName(QStringLiteral("qor_inplace_button"));
            button->setText(QStringLiteral("..."));
            button->setFocusPolicy(Qt::NoFocus);
            layout->addWidget(edit, 1);
            layout->addWidget(button);
            box->setFocusProxy(edit);
            edit->installEventFilter(const_cast<QorValueListDelegate *>(this));
            connect(button, &QToolButton::clicked, m_grid, [grid = m_grid] {
                if (grid->OnEditButtonClick)
                    grid->OnEditButtonClick(grid);
            });
            return box;
        }
        case esSimple:
            break;
        }
        auto *edit = new QLineEdit(parent);
        edit->setObjectName(QStringLiteral("qor_inplace_edit"));
        edit->setFrame(false);
        return edit;
    }

    void setEditorData(QWidget *editor, const QModelIndex &index) const override
    {
        const QString value = index.data(Qt::EditRole).toString();
        if (auto *combo = qobject_cast<QComboBox *>(editor)) {
            const int at = combo->findText(value);
            combo->setCurrentIndex(at);
            if (combo->isEditable())
                combo->setEditText(value);
        } else if (auto *edit = lineEditOf(editor)) {
            if (edit->text() != value)
                edit->setText(value);
        }
    }

    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override
    {
        if (auto *combo = qobject_cast<QComboBox *>(editor))
            model->setData(index, combo->currentText(), Qt::EditRole);
        else if (auto *edit = lineEditOf(editor); edit && !edit->isReadOnly())
            model->setData(index, edit->text(), Qt::EditRole);
    }

    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option, const QModelIndex &) const override
    {
        editor->setGeometry(option.rect);
    }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        // The line edit inside an ellipsis editor commits like a plain one.
        if (auto *edit = qobject_cast<QLineEdit *>(object); edit && edit->parentWidget()
            && edit->parentWidget()->objectName() == QLatin1String("qor_inplace_ellipsis")) {
            if (event->type() == QEvent::KeyPress) {
                auto *key = static_cast<QKeyEvent *>(event);
                if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
                    Q_EMIT const_cast<QorValueListDelegate *>(this)->commitData(edit->parentWidget());
                    return true;
                }
            }
            return false;
        }
        return QStyledItemDelegate::eventFilter(object, event);
    }

    // A line's text is laid out once and kept: the style lays a cell's text
    // out anew at every painting (twice, to see whether it must be cut
    // short), and the inspector repaints the same few hundred names and
    // values over and over while a design is worked on.
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyleOptionViewItem opt = option;
        initStyleOption(&opt, index);
        constexpr QStyleOptionViewItem::ViewItemFeatures laidOutByStyle =
            QStyleOptionViewItem::WrapText | QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDecoration;
        if (opt.text.isEmpty() || (opt.features & laidOutByStyle) || opt.direction != Qt::LeftToRight
            || opt.displayAlignment != (Qt::AlignLeft | Qt::AlignVCenter) || opt.textElideMode != Qt::ElideRight
            || (opt.state & QStyle::State_Editing)) {
            QStyledItemDelegate::paint(painter, option, index);
            return;
        }
        const QWidget *widget = opt.widget;
        QStyle *style = widget ? widget->style() : QApplication::style();
        const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, widget) + 1;
        const QRect textRect =
            style->subElementRect(QStyle::SE_ItemViewItemText, &opt, widget).adjusted(margin, 0, -margin, 0);
        const QString text = opt.text;
        // The style draws the cell without its text: background, selection
        // and focus frame, as ever.
        opt.text.clear();
        style->drawControl(QStyle::CE_ItemViewItem, &opt, painter, widget);

        QPalette::ColorGroup group = (opt.state & QStyle::State_Enabled) ? QPalette::Normal : QPalette::Disabled;
        if (group == QPalette::Normal && !(opt.state & QStyle::State_Active))
            group = QPalette::Inactive;
        const QStaticText &laidOut = textFor(text, opt.font, textRect.width());
        const QFontMetricsF metrics(opt.font);
        // Placed as the style places one line: centred on whole pixels.
        const int top = textRect.top() + (textRect.height() - qCeil(metrics.ascent() + metrics.descent())) / 2;
        painter->save();
        painter->setPen(opt.palette.color(group, (opt.state & QStyle::State_Selected) ? QPalette::HighlightedText : QPalette::Text));
        painter->setFont(opt.font);
        painter->drawStaticText(QPointF(textRect.left(), top), laidOut);
        painter->restore();
    }

private:
    // The laid-out text of a cell; cut short with an ellipsis where it is
    // wider than the cell, as the style would.
    const QStaticText &textFor(const QString &text, const QFont &font, int width) const
    {
        constexpr qsizetype kept = 4096;
        if (font != m_textFont || m_texts.size() + m_cut.size() > kept) {
            m_texts.clear();
            m_cut.clear();
            m_textFont = font;
        }
        auto whole = m_texts.find(text);
        if (whole == m_texts.end())
            whole = m_texts.insert(text, laidOutText(text, font));
        if (whole->size().width() <= width)
            return *whole;
        const std::pair<QString, int> key(text, width);
        auto cut = m_cut.find(key);
        if (cut == m_cut.end())
            cut = m_cut.insert(key, laidOutText(QFontMetrics(font).elidedText(text, Qt::ElideRight, width), font));
        return *cut;
    }

    static QStaticText laidOutText(const QString &text, const QFont &font)
    {
        QStaticText laidOut(text);
        laidOut.setTextFormat(Qt::PlainText);
        laidOut.prepare(QTransform(), font);
        return laidOut;
    }

    static QLineEdit *lineEditOf(QWidget *editor)
    {
        if (auto *edit = qobject_cast<QLineEdit *>(editor))
            return edit;
        return editor->findChild<QLineEdit *>(QStringLiteral("qor_inplace_edit"));
    }

    TValueListEditor *m_grid;
    mutable QHash<QString, QStaticText> m_texts;
    mutable QHash<std::pair<QString, int>, QStaticText> m_cut;
    mutable QFont m_textFont;
};

// ---- TValueListEditor --------------------------------------------------

TValueListEditor::TValueListEditor(QWidget *Parent)
    : QTableView(Parent)
    , m_strings(new TValueListStrings(this))
    , m_model(new QorValueListModel(this, m_strings))
    , m_delegate(new QorValueListDelegate(this))
{
    setModel(m_model);
    setItemDelegate(m_delegate);
    horizontalHeader()->hide();
    verticalHeader()->hide();
    horizontalHeader()->setMinimumSectionSize(0);
    horizontalHeader()->setStretchLastSection(true);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::SelectedClicked | QAbstractItemView::EditKeyPressed
                    | QAbstractItemView::AnyKeyPressed | QAbstractItemView::CurrentChanged);
    setWordWrap(false);
    setColumnWidth(0, 100);
    // A column resized (the value column stretched when the scroll bar
    // comes or goes, the name column dragged) is laid out and repainted at
    // once: the view's own deferred handling repaints the grid a second
    // time after a new selection has just been painted.
    if (disconnect(horizontalHeader(), SIGNAL(sectionResized(int,int,int)), this, SLOT(columnResized(int,int,int))))
        connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] {
            // Only columns wider than the grid change its horizontal
            // scrolling; the stretched value column never does.
            if (horizontalHeader()->length() > viewport()->width() || horizontalScrollBar()->maximum() > 0)
                updateGeometries();
            else
                updateEditorGeometries();
            viewport()->update();
        });
    // The grid keeps its row when its lines are rebuilt, or the last one
    // when there are fewer now; a grid with lines always has a current one.
    connect(m_model, &QAbstractItemModel::modelAboutToBeReset, this, [this] { m_rowBeforeReset = Row(); });
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] {
        if (RowCount() > 0)
            SetRow(std::clamp(m_rowBeforeReset, 0, RowCount() - 1));
    });
}

TValueListEditor::~TValueListEditor() = default;

bool TValueListEditor::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event)
{
    if (trigger == QAbstractItemView::CurrentChanged) {
        const QWidget *focus = QApplication::focusWidget();
        if (!focus || (focus != this && !isAncestorOf(focus)))
            return false;
    }
    return QTableView::edit(index, trigger, event);
}

int TValueListEditor::Row() const
{
    return currentIndex().isValid() ? currentIndex().row() : -1;
}

void TValueListEditor::SetRow(int Row)
{
    if (Row < 0 || Row >= RowCount())
        return;
    setCurrentIndex(m_model->index(Row, 1));
}

int TValueListEditor::ColWidth0() const
{
    return columnWidth(0);
}

void TValueListEditor::SetColWidth0(int Width)
{
    setColumnWidth(0, std::max(Width, 0));
}

QWidget *TValueListEditor::InplaceEditor() const
{
    return currentIndex().isValid() ? indexWidget(currentIndex()) : nullptr;
}

void TValueListEditor::DoOnValidate()
{
    ValidateLine(Row());
}

void TValueListEditor::ValidateLine(int)
{
}

void TValueListEditor::InplaceEditorOnChange(QObject *)
{
}

void TValueListEditor::InplaceEditorOnKeyPress(QObject *, int &Key)
{
    if (Key == Qt::Key_Return)
        DoOnValidate();
}

void TValueListEditor::keyPressEvent(QKeyEvent *event)
{
    QTableView::keyPressEvent(event);
    // The hooks hear both Return keys as one.
    int key = event->key() == Qt::Key_Enter ? int(Qt::Key_Return) : event->key();
    if (OnKeyDown)
        OnKeyDown(this, key, event->modifiers());
    KeyDown(key, event->modifiers());
}

void TValueListEditor::KeyDown(int &, Qt::KeyboardModifiers)
{
}

void TValueListEditor::keyboardSearch(const QString &)
{
}

// ---- TVhoValueListEditor -----------------------------------------------

TVhoValueListEditor::TVhoValueListEditor(QWidget *Parent)
    : TValueListEditor(Parent)
{
    // The grid's face has the colour of buttons.
    QPalette face = palette();
    face.setColor(QPalette::Base, face.color(QPalette::Button));
    setPalette(face);
    viewport()->setMouseTracking(true);
}

bool TVhoValueListEditor::PosAtColLine(int X) const
{
    const int edge = columnViewportPosition(0) + columnWidth(0);
    return X >= edge - 3 && X <= edge + 3;
}

void TVhoValueListEditor::StartResizeCol(const QPoint &Point)
{
    m_resizing = true;
    m_lastResizePos = Point;
}

void TVhoValueListEditor::ResizeColTo(const QPoint &Point)
{
    SetColWidth0(ColWidth0() + Point.x() - m_lastResizePos.x());
    m_lastResizePos = Point;
}

void TVhoValueListEditor::EndResizeCol(const QPoint &Point)
{
    ResizeColTo(Point);
    m_resizing = false;
}

QRect TVhoValueListEditor::MarkerRect(int Row) const
{
    const QString name = Strings()->Names(Row);
    qsizetype at = 0;
    while (at < name.size() && name.at(at) == QLatin1Char(' '))
        ++at;
    if (at >= name.size() || (name.at(at) != QLatin1Char('+') && name.at(at) != QLatin1Char('-')))
        return {};
    // Where the item delegate draws the name: inside the cell's text
    // margins, in the grid's font, blanks of the indent included.
    const QRect cell = visualRect(model()->index(Row, 0));
    const int margin = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1;
    const QFontMetrics metrics(font());
    const int left = cell.left() + margin + metrics.horizontalAdvance(name.left(at));
    // The sign is small: the blank after it and a few pixels before it
    // count as well.
    const QRect marker(left - 3, cell.top(), metrics.horizontalAdvance(name.mid(at, 2)) + 3, cell.height());
    return marker.intersected(cell);
}

void TVhoValueListEditor::LeftButtonDown(const QPoint &)
{
}

void TVhoValueListEditor::DoubleClicked(const QPoint &)
{
}

bool TVhoValueListEditor::viewportEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseMove: {
        auto *mouse = static_cast<QMouseEvent *>(event);
        const QPoint p = mouse->position().toPoint();
        if (m_canResizeCol && m_resizing && (mouse->buttons() & Qt::LeftButton)) {
            ResizeColTo(p);
            return true;
        }
        if (m_canResizeCol && !m_resizing) {
            if (PosAtColLine(p.x())) {
                if (!m_savedCursorSet || viewport()->cursor().shape() != Qt::SplitHCursor) {
                    m_savedCursor = viewport()->cursor().shape();
                    m_savedCursorSet = true;
                }
                viewport()->setCursor(Qt::SplitHCursor);
            } else if (m_savedCursorSet) {
                viewport()->setCursor(m_savedCursor);
                m_savedCursorSet = false;
            }
        }
        break;
    }
    case QEvent::MouseButtonPress: {
        auto *mouse = static_cast<QMouseEvent *>(event);
        const QPoint p = mouse->position().toPoint();
        if (mouse->button() == Qt::LeftButton && m_canResizeCol && PosAtColLine(p.x())) {
            StartResizeCol(p);
            return true;
        }
        const bool handled = TValueListEditor::viewportEvent(event);
        if (mouse->button() == Qt::LeftButton)
            LeftButtonDown(p);
        return handled;
    }
    case QEvent::MouseButtonRelease: {
        auto *mouse = static_cast<QMouseEvent *>(event);
        if (mouse->button() == Qt::LeftButton && m_resizing) {
            EndResizeCol(mouse->position().toPoint());
            return true;
        }
        break;
    }
    case QEvent::MouseButtonDblClick: {
        auto *mouse = static_cast<QMouseEvent *>(event);
        if (m_resizing || (m_canResizeCol && PosAtColLine(mouse->position().toPoint().x())))
            return true;
        DoubleClicked(mouse->position().toPoint());
        return TValueListEditor::viewportEvent(event);
    }
    default:
        break;
    }
    return TValueListEditor::viewportEvent(event);
}
