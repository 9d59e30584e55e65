#include "CategoryTable.h"

#include <QIcon>
#include <QPushButton>
#include <QTableWidget>

CategoryTable::CategoryTable(QTableWidget* table, const LocalisedLabels& labels, const EditingState& state,
                             std::function<void(const EffectInfo&)> open)
    : table_(table)
    , labels_(labels)
    , state_(state)
    , open_(std::move(open))
{
    // Its rows' buttons take the keyboard, shown focused; the table itself
    // would take a Tab with nothing to show for it.
    table_->setFocusPolicy(Qt::NoFocus);
    timer_Reload_Toolbar_Arrays.setSingleShot(true);
    timer_Reload_Toolbar_Arrays.setInterval(200);
    connect(&timer_Reload_Toolbar_Arrays, &QTimer::timeout, this, &CategoryTable::Timer_Reload_Toolbar_Arrays_Routine);
}

void CategoryTable::Reset_Toobar_Arrays()
{
    array_Face.clear();
    array_Eye.clear();
    array_Mouth.clear();
    reloadTable();
    for (const QPointer<QPushButton>& button : std::as_const(array_Buttons))
        if (button)
            button->deleteLater();
    array_Buttons.clear();
    timer_Reload_Toolbar_Arrays.start();
}

// Fills the lists of all three categories, whatever the selected one, from
// the effects' rows.
void CategoryTable::Timer_Reload_Toolbar_Arrays_Routine()
{
    const auto labelsOf = [this](Category category) {
        QStringList titles;
        for (const EffectInfo* effect : effectsOf(category))
            titles.append(labels_.text(effect->row.label));
        return titles;
    };
    array_Face = labelsOf(Category::Face);
    array_Eye = labelsOf(Category::Eye);
    array_Mouth = labelsOf(Category::Mouth);
    reloadTable();
}

void CategoryTable::select(std::uint64_t index, const QString& header)
{
    u_Table_Index = index;
    table_->horizontalHeaderItem(0)->setText(header);
    reloadTable();
}

void CategoryTable::reloadTable()
{
    const QStringList* titles = u_Table_Index == 0   ? &array_Face
                                : u_Table_Index == 1 ? &array_Eye
                                : u_Table_Index == 2 ? &array_Mouth
                                                     : nullptr;
    table_->setRowCount(titles ? int(titles->size()) : 0);
    for (int row = 0; titles && row < titles->size(); ++row) {
        auto* cell = new QWidget; // the row's cell view
        QPushButton* button = rowButton(u_Table_Index, row, titles->at(row));
        button->setParent(cell);
        button->setGeometry(0, 0, 164, 30);
        table_->setCellWidget(row, 0, cell);
        array_Buttons.append(button);
    }
    showEffectsOn();
}

void CategoryTable::showEffectsOn()
{
    if (u_Table_Index > std::uint64_t(Category::Mouth))
        return;
    const std::vector<const EffectInfo*> effects = effectsOf(Category(u_Table_Index));
    static const QIcon tick(":/icons/tick.svg");
    for (qsizetype row = 0; row < array_Buttons.size() && size_t(row) < effects.size(); ++row)
        if (QPushButton* button = array_Buttons[row]) {
            const bool on = state_.*effects[size_t(row)]->effectSwitch;
            button->setChecked(on);
            button->setIcon(on ? tick : QIcon());
        }
}

// A row's button opens the effect of that row of the category; Advanced
// lists no effects.
QPushButton* CategoryTable::rowButton(std::uint64_t category, int row, const QString& title)
{
    auto* button = new QPushButton(title);
    if (category > std::uint64_t(Category::Mouth))
        return button;
    // Checkable only to look highlighted while its effect is on; a click
    // opens the panel and the row shows the switch again.
    button->setCheckable(true);
    const std::vector<const EffectInfo*> effects = effectsOf(Category(category));
    if (size_t(row) < effects.size())
        connect(button, &QPushButton::clicked, this, [this, effect = effects[size_t(row)]] {
            open_(*effect);
            showEffectsOn();
        });
    return button;
}
