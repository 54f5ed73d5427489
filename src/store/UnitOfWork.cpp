#include "store/UnitOfWork.h"

#include "platform/Messages.h"
#include "store/RecordStore.h"

bool RunAsUnit(CRecordStore& store, const std::function<bool()>& run) {
    {
        const CMuteMessages mute;
        CRecordGroup group(store);
        if (group.IsOpen() && run() && group.Commit()) {
            return true;
        }
        group.Undo();
    }
    return run();
}
