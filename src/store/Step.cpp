#include "store/Step.h"

#include "platform/Messages.h"
#include "store/RecordStore.h"

using namespace Qt::StringLiterals;

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
}

CStep::CStep(CRecordStore& store, const QString& name) : m_store(store) {
    m_store.History().BeginStep(name);
}

CStep::~CStep() {
    CHistory& history = m_store.History();
    history.EndStep();
    if (history.IsInStep()) {
        return;
    }
    ShowHistoryNotices(m_store);
}

void CStep::Rename(const QString& name) {
    m_store.History().RenameStep(name);
}

void CStep::Cancel() {
    m_store.History().CancelStep();
}

bool CStep::MayGoOn(qint64 bytes) {
    CHistory& history = m_store.History();
    if (bytes <= history.GetLimits().bytes) {
        return true;
    }
    if (!AskYesNo(QString::fromLatin1(kGoOnWithoutUndo))) {
        return false;
    }
    history.SkipStep();
    return true;
}
