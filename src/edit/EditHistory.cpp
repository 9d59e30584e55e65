#include "EditHistory.h"

#include "EffectCatalogue.h"


#include <QCoreApplication>

namespace {

using Clock = std::chrono::steady_clock;

// Equal as far as Undo is concerned: the modes do not count.
bool sameEdit(const Edit& a, Edit b)
{
    b.state.keepModesOf(a.state);
    return a.photoEdits == b.photoEdits && a.state == b.state;
}

// Whether one field is the same in both.
bool sameField(const EditingState& a, const EditingState& b, const char* field)
{
    bool same = true;
    a.forEachField([&](const char* name, const auto& value) {
        if (qstrcmp(name, field) == 0)
            b.forEachField([&](const char* other, const auto& otherValue) {
                if constexpr (std::is_same_v<decltype(value), decltype(otherValue)>)
                    if (qstrcmp(other, field) == 0)
                        same = value == otherValue;
            });
    });
    return same;
}

QString tr(const char* text)
{
    return QCoreApplication::translate("EditHistory", text);
}

} // namespace

// One step; Qt's stack calls redo() once on push, when the change has
// already been made in the window.
class EditStep : public QUndoCommand {
public:
    EditStep(EditHistory& history, Edit before, Edit after, const QString& name, int key)
        : QUndoCommand(name)
        , history_(history)
        , before_(std::move(before))
        , after_(std::move(after))
        , key_(key)
        , at_(Clock::now())
    {
    }
    void undo() override { history_.put(before_); }
    void redo() override
    {
        if (done_)
            history_.put(after_);
        done_ = true;
    }
    int id() const override { return key_; }
    bool mergeWith(const QUndoCommand* other) override
    {
        const auto* next = static_cast<const EditStep*>(other);
        if (next->at_ - at_ > EditHistory::kMergeWindow)
            return false;
        after_ = next->after_;
        at_ = next->at_;
        setObsolete(sameEdit(before_, after_)); // dragged back where it started
        return true;
    }

private:
    EditHistory& history_;
    Edit before_, after_;
    int key_;
    Clock::time_point at_;
    bool done_ = false;
};

EditHistory::EditHistory(const LocalisedLabels& labels, std::function<void(const Edit&)> restore)
    : labels_(labels)
    , restore_(std::move(restore))
{
}

void EditHistory::startAt(const Edit& now)
{
    stack_.clear();
    last_ = now;
}

bool EditHistory::record(const Edit& now, const Change& change)
{
    const SettingRange* range = change.kind == Change::Field ? settingRange(change.field) : nullptr;
    if (range && range->kind == FieldKind::Mode) // the window's, not the edit's
        return false;
    const bool unchanged = change.kind == Change::Field ? sameField(last_.state, now.state, change.field)
                                                        : sameEdit(last_, now);
    if (unchanged) // a control set to the value it had, Defaults of the starting values
        return false;
    // Quick changes of one field merge: its place in the settings list is
    // the step's key. A change named by its maker (a spot clicked) is a
    // step of its own however quick.
    int key = -1;
    if (change.kind == Change::Field && change.step.isEmpty()) {
        int index = 0;
        now.state.forEachField([&](const char* name, const auto&) {
            ++index;
            if (qstrcmp(name, change.field) == 0)
                key = index;
        });
    }
    stack_.push(new EditStep(*this, last_, now, stepName(change, now), key));
    last_ = now;
    return true;
}

void EditHistory::put(const Edit& edit)
{
    last_ = edit;
    restore_(edit);
}

// A switch is "<effect> On" or "Off", a setting its own step name; anything
// else is named by whoever made it.
QString EditHistory::stepName(const Change& change, const Edit& now) const
{
    if (!change.step.isEmpty() || change.kind != Change::Field)
        return change.step.isEmpty() ? tr("Change Settings") : change.step;
    if (const SettingRange* range = settingRange(change.field))
        return range->step ? tr(range->step) : tr("Change Settings");
    for (const EffectInfo& effect : effects())
        if (qstrcmp(nameOfSwitch(effect.effectSwitch), change.field) == 0)
            return (now.state.*effect.effectSwitch ? tr("%1 On") : tr("%1 Off")).arg(labels_.text(effect.row.label));
    return tr("Change Settings");
}
