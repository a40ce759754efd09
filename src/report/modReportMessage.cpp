// Appends to the report file under a lock shared by all instances.
#include "src/report/modReportMessage.h"

#include "src/base/raised_error.h"
#include "src/base/text.h"
#include "src/forms/Application.h"
#include "src/platform/file_system.h"
#include "src/platform/named_mutex.h"
#include "src/platform/window_services.h"
#include "src/translator/modTranslator.h"

// The name is fixed: all instances of the program must use the same lock.
static const char* const kGlobalMutex = "Stellor_Global_Mutex";

namespace
{

/// Holds the lock until the end of the scope.
class GlobalMutexHolder
{
public:
    explicit GlobalMutexHolder(NamedMutex& objMutex) : m_objMutex(objMutex)
    {
        m_objMutex.Acquire(kGlobalMutex);
    }
    ~GlobalMutexHolder() { m_objMutex.Release(kGlobalMutex); }
    GlobalMutexHolder(const GlobalMutexHolder&) = delete;
    GlobalMutexHolder& operator=(const GlobalMutexHolder&) = delete;

private:
    NamedMutex& m_objMutex;
};

}  // namespace

// False if the line couldn't be written.
static bool bAppendReportLine(Application& app, const std::string& sMessage, const std::string& sLogFile)
{
    try {
        app.svc.objFileSystem.AppendLine(sLogFile, sPrintable(sMessage, "\t\r\n"));
        return true;
    } catch (const clsRaisedError&) {
        return false;
    }
}

void ReportMessage(Application& app, const std::string& sMessage, const std::string& sLogFile, bool bVerbose)
{
    const GlobalMutexHolder objHolder(app.svc.objNamedMutex);
    const bool bLost = !sLogFile.empty() && !bAppendReportLine(app, sMessage, sLogFile);
    const bool bShowLost = bLost && !(app.bReportFailureShown && app.svc.objWindows.bHasDisplay());
    app.bReportFailureShown = app.bReportFailureShown || bLost;
    if (bVerbose || bShowLost)
        app.svc.objWindows.MsgBox(sMessage, sTranslate(app, "Information"), BoxIcon::Information,
                                  BoxButtons::Ok);
}
