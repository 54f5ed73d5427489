#include "Safety.h"

#include "Choosing.h"
#include "Hands.h"
#include "controls/ReportList.h"

using namespace Qt::StringLiterals;

namespace {
CTourStep Open(const QString& command) {
    return {QString(), u"CDietFrame"_s, {}, [command](QWidget* frame) {
                ClickMenu(frame, u"Tools"_s, command);
            }};
}
}  // namespace

std::vector<CTourStep> KeepSafe(const QString& backupFile) {
    return {
        Open(u"Back up..."_s),
        AnswerFileDialog(QString(), backupFile),
        AnswerMessage(u"A backup saved"_s, u"A backup was saved as '%1'"_s.arg(backupFile),
                      u"OK"_s),
        Open(u"Check data..."_s),
        AnswerMessage(u"Data checked"_s, u"The data is sound."_s, u"OK"_s),
        // What is deleted now comes back with the backup.
        {QString(), u"CDietFrame"_s,
         [](QWidget* frame) { Press(Find(frame, u"entries"_s), Qt::Key_A, Qt::ControlModifier); },
         [](QWidget* frame) { Press(Find(frame, u"entries"_s), Qt::Key_Delete); }},
        AnswerMessage(QString(), u"Are you sure you want to delete"_s, u"Yes"_s),
        Open(u"Restore..."_s),
        AnswerFileDialog(u"The backup to restore"_s, backupFile),
        AnswerMessage(u"What a backup holds"_s, u"Ann: diet entries"_s, u"Yes"_s),
        AnswerMessage(u"Restored"_s, u"The data of '%1' was restored."_s.arg(backupFile), u"OK"_s),
        {u"The data of the backup"_s,
         u"CDietFrame"_s,
         [](QWidget* frame) {
             Expect(Find<CReportList>(frame, u"entries"_s)->RowCount() > 0,
                    u"the deleted entries"_s);
         },
         {}},
    };
}
