#include "store/Step.h"

#include "platform/Messages.h"
#include "store/RecordStore.h"
#include "store/engine/StorageState.h"

using namespace Qt::StringLiterals;

namespace {
/// Commands as the names of steps begin, and in the past.
struct CCommandWords {
    QLatin1StringView command;
    QLatin1StringView done;
};
constexpr CCommandWords kCommandWords[] = {
    {kAdditionStep, "Added"_L1}, {kCopyStep, "Copied"_L1},          {kCutStep, "Cut"_L1},
    {kDeleteStep, "Deleted"_L1}, {kDuplicateStep, "Duplicated"_L1}, {kEditStep, "Changed"_L1},
    {kMoveStep, "Moved"_L1},     {kRenameStep, "Renamed"_L1}};
}  // namespace

QString DoneText(const QString& step, const QString& place) {
    const QString of = u" of "_s;
    for (const CCommandWords& words : kCommandWords) {
        if (step.section(of, 0, 0) == words.command) {
            const QString done = words.done + u' ' + step.section(of, 1);
            return place.isEmpty() ? done + u'.' : done + u' ' + place + u'.';
        }
    }
    return {};
}

void ShowHistoryNotices(CRecordStore& store) {
    const CHistoryNotices notices = store.History().TakeNotices();
    if (notices.isDamaged) {
        ShowMessage(
            u"The history was damaged and starts again: what was done before cannot be undone. "
            u"Your "
            "data is not affected."_s,
            EMessageIcon::Warning);
    }
    if (notices.hasOutgrown) {
        ShowMessage(u"This cannot be undone: it changed more than the history can keep."_s,
                    EMessageIcon::Information);
    }
    if (notices.isPartLeft) {
        ShowMessage(
            u"A damaged part of the history could not be removed. It stays in the data file."_s,
            EMessageIcon::Warning);
    }
}

CStep::CStep(CRecordStore& store, const QString& name) : m_store(store) {
    if (!m_store.History().IsInStep()) {
        m_store.TakeSilence();
        if (const CStorageState& state = m_store.EngineState(); !state.isInUnit) {
            state.feed.NoteStep();
        }
    }
    m_store.History().BeginStep(name);
}

CStep::~CStep() {
    CHistory& history = m_store.History();
    const QString name = history.EndStep();
    if (history.IsInStep()) {
        return;
    }
    ShowHistoryNotices(m_store);
    const QString text = m_statusText.isEmpty() ? DoneText(name) : m_statusText;
    const bool isSilent = m_store.TakeSilence();
    if (!name.isEmpty()) {
        // A step without a text clears the former one, since Ctrl+Z now undoes this step.
        m_store.ShowStatus(isSilent || text.isEmpty() ? QString()
                                                      : text + u" Ctrl+Z takes it back."_s);
    }
}

void CStep::Rename(const QString& name) {
    m_store.History().RenameStep(name);
}

void CStep::Cancel() {
    m_store.History().CancelStep();
}

void CStep::SetProvisional(bool isProvisional) {
    m_store.History().SetProvisional(isProvisional);
}

bool CStep::MayGoOn(qint64 room) {
    CHistory& history = m_store.History();
    if (room <= history.GetLimits().bytes) {
        return true;
    }
    if (!AskYesNo(QString::fromLatin1(kGoOnWithoutUndo))) {
        return false;
    }
    history.SkipStep();
    m_store.ShowStatus({});  // Ctrl+Z no longer undoes what is shown there
    return true;
}
