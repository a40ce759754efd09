// Reads the form.
#include "src/editing/modItemFromGUI.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "src/base/clsConversionOptions.h"
#include "src/base/number_text.h"
#include "src/base/text.h"
#include "src/catalogue/modSpecialProcessDetails.h"
#include "src/editing/file_fields.h"
#include "src/forms/Application.h"
#include "src/forms/scope_guards.h"
#include "src/job/modFileTypes.h"
#include "src/job/modTargetNaming.h"
#include "src/platform/locale.h"

constexpr std::int32_t kMethodOfSpecialProcess = 4;

static void ReadFiles(const FileFields& objFields, clsConversionOptions& objOptions)
{
    objOptions.lOriginalFileType = lSelectedFileType(objFields.cbFileTypeOriginal);
    objOptions.sOriginalFile = sTrim(objFields.cbOriginalFile.Text());
    objOptions.lTargetFileType = lSelectedFileType(objFields.cbFileTypeTarget);
    objOptions.sTargetFile = sTrim(objFields.cbTargetFile.Text());
    objOptions.bDoSubfolders = objFields.cbDoSubfolders.Value() == 1;
    objOptions.bSaveInOriginalFolder = objFields.cbSaveToOriginalFolder.Value() == 1;
}

// The target field shows where the files will go.
static void FollowSource(const FileFields& objFields)
{
    if (objFields.cbSaveToOriginalFolder.Value() == 1)
        objFields.cbTargetFile.SetText(sPatternBesideSource(objFields.cbOriginalFile.Text(),
                                                            lSelectedFileType(objFields.cbFileTypeTarget)));
}

void GetConversionItemFromGUI(Application& app, clsConversionOptions& objOptions)
{
    frmMain& frm = app.frmMain;
    const FileFields objFields = ConversionFields(frm);
    objOptions.sActionToDo = "C";
    FollowSource(objFields);
    objOptions.lConversionMethod = frm.lConversionMethod;
    ReadFiles(objFields, objOptions);
    objOptions.sExtraParams = frm.sImageConversionOptions;
}

namespace
{

/// Reads the panel's inputs.
class PanelInputs
{
public:
    explicit PanelInputs(const Application& app)
        : m_frm(app.frmMain), m_cSign(app.svc.objLocale.cDecimalSign())
    {
    }

    DetailsValue Value(const SpecialProcessParameter& objParameter) const
    {
        switch (objParameter.eType) {
            case FieldType::Double:
            case FieldType::LongReadAsDouble:
                return dNumber(sText(objParameter.eSlot));
            case FieldType::Boolean:
            case FieldType::CapitalBoolean:
                return lChoice(objParameter.eSlot) == 1;
            default:
                return bIsChoice(objParameter.eSlot) ? lChoice(objParameter.eSlot)
                                                     : lNumber(sText(objParameter.eSlot));
        }
    }
    std::int32_t lNumber(const std::string& sEntry) const
    {
        const double dRounded = std::nearbyint(dNumber(sEntry));
        const bool bFits = dRounded >= std::numeric_limits<std::int32_t>::min() &&
                           dRounded <= std::numeric_limits<std::int32_t>::max();
        return bFits ? static_cast<std::int32_t>(dRounded) : 0;
    }

private:
    double dNumber(const std::string& sEntry) const
    {
        return bIsNumeric(sEntry, m_cSign) ? dToDouble(sEntry, m_cSign) : 0;
    }
    static bool bIsChoice(InputSlot eSlot) { return eSlot == InputSlot::List || eSlot == InputSlot::Check; }
    std::int32_t lChoice(InputSlot eSlot) const
    {
        return eSlot == InputSlot::Check ? m_frm.cbSpecialProcessBoolean.Value()
                                         : m_frm.cbSpecialProcessListBox.ListIndex();
    }
    std::string sText(InputSlot eSlot) const
    {
        switch (eSlot) {
            case InputSlot::Text1:
                return m_frm.txtSpecialProcessTextEntry1.Text();
            case InputSlot::Text1b:
                return m_frm.txtSpecialProcessTextEntry1b.Text();
            case InputSlot::Text1c:
                return m_frm.txtSpecialProcessTextEntry1c.Text();
            case InputSlot::Text2:
                return m_frm.txtSpecialProcessTextEntry2.Text();
            case InputSlot::Colour:
                return m_frm.lblColorSelected2.Caption();
            default:
                return "";
        }
    }

    const frmMain& m_frm;
    const char m_cSign;
};

}  // namespace

static std::int32_t lItemData(const ComboBox& cb)
{
    return cb.ListIndex() < 0 ? 0 : cb.ItemData(cb.ListIndex());
}

std::int32_t lSelectedProcess(const Application& app)
{
    return lItemData(app.frmMain.cbSpecialProcesses);
}

std::string sLaunchDetailsFromGUI(const Application& app)
{
    const frmMain& frm = app.frmMain;
    return WriteLaunchDetails({lItemData(frm.cbCommandLineThreadPriority),
                               lItemData(frm.cbCommandLineWindowState),
                               PanelInputs(app).lNumber(frm.txtCommandLineWaitTimeInSeconds.Text())});
}

static void ReadSpecializedFiles(Application& app, clsConversionOptions& objOptions)
{
    frmMain& frm = app.frmMain;
    const FileFields objFields = SpecializedFields(frm);
    FollowSource(objFields);
    if (objFields.cbSaveToOriginalFolder.Value() == 1) {
        // The conversion's hidden target takes the source too; that is how it has always been.
        const InternalChange objChange(app);
        frm.cbTargetFile.SetText(objFields.cbOriginalFile.Text());
    }
    ReadFiles(objFields, objOptions);
}

static std::string sPanelDetails(Application& app, const SpecialProcessRow& objRow)
{
    const PanelInputs objInputs(app);
    DetailsValues aValues;
    for (const SpecialProcessParameter& objParameter : objRow.aParameters)
        aValues.push_back(objInputs.Value(objParameter));
    return WriteDetails(objRow, app.frmMain.sImageConversionOptions, aValues,
                        app.svc.objLocale.cDecimalSign());
}

void GetSpecializedItemFromGUI(Application& app, clsConversionOptions& objOptions)
{
    frmMain& frm = app.frmMain;
    objOptions.lConversionMethod = kMethodOfSpecialProcess;
    objOptions.lSpecialProcess = lSelectedProcess(app);
    objOptions.sActionToDo = "S" + std::to_string(objOptions.lSpecialProcess);
    const SpecialProcessRow* pRow = pSpecialProcess(objOptions.lSpecialProcess);
    if (objOptions.lSpecialProcess == SP_LAUNCH) {
        objOptions.sOriginalFile = frm.cbCommandLine.Text();
        objOptions.sTargetFile = frm.cbCommandLineArguments.Text();
        objOptions.sExtraParams = sLaunchDetailsFromGUI(app);
    } else {
        ReadSpecializedFiles(app, objOptions);
        if (pRow)
            objOptions.sExtraParams = sPanelDetails(app, *pRow);
    }
    if (pRow)
        frm.asSP_Details.at(static_cast<std::size_t>(objOptions.lSpecialProcess)) = objOptions.sExtraParams;
}

void BuildRequestFromGUI(Application& app, clsConversionOptions& objOptions)
{
    if (app.frmMain.rbActionToDo(0).Value())
        GetConversionItemFromGUI(app, objOptions);
    else
        GetSpecializedItemFromGUI(app, objOptions);
}
