#pragma once

#include "EditingState.h"
#include "EffectCatalogue.h"
#include "LocalisedLabels.h"

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>

#include <cstdint>
#include <functional>

class QPushButton;
class QTableWidget;

// The toolbar's categories and the action table beside the preview: a
// category lists its effects as one push button per row, and a button opens
// its effect's panel. A category change empties the table at once and fills
// it 0.2 s later; a second change within that time replaces the pending
// refill.
class CategoryTable : public QObject {
    Q_OBJECT

public:
    CategoryTable(QTableWidget* table, const LocalisedLabels& labels, const EditingState& state,
                  std::function<void(const EffectInfo& effect)> open);

    std::uint64_t u_Table_Index = 0; // 0 Face, 1 Eye, 2 Mouth, 3 Advanced
    // Rows of the action table per category, and the row buttons made so far.
    QStringList array_Face;
    QStringList array_Eye;
    QStringList array_Mouth;
    QList<QPointer<QPushButton>> array_Buttons;
    // The one pending refill of the action table.
    QTimer timer_Reload_Toolbar_Arrays;

    void Reset_Toobar_Arrays();
    void Timer_Reload_Toolbar_Arrays_Routine();
    // The category `index` with its fixed English header; no refill of its own.
    void select(std::uint64_t index, const QString& header);
    // Each row shows whether its effect is on: ticked and highlighted.
    void showEffectsOn();

private:
    void reloadTable();
    QPushButton* rowButton(std::uint64_t category, int row, const QString& title);

    QTableWidget* table_;
    const LocalisedLabels& labels_;
    const EditingState& state_;
    std::function<void(const EffectInfo&)> open_;
};
