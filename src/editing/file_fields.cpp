// Names the controls of the two sets of file fields.
#include "src/editing/file_fields.h"

#include "src/base/text.h"

FileFields ConversionFields(frmMain& frm)
{
    return {frm.cbOriginalFile,        frm.cbFileTypeOriginal,
            frm.cbDoSubfolders,        frm.cbTargetFile,
            frm.cbFileTypeTarget,      frm.cbSaveToOriginalFolder,
            frm.frameTargetFile,       frm.cmdLaunchOriginal,
            frm.cmdLaunchTarget,       {&frm.cmdSelectTargetFile, &frm.picSelectTargetFile},
            frm.colExtensionsOriginal, frm.colExtensionsTarget,
            frm.sProposedTarget};
}

FileFields SpecializedFields(frmMain& frm)
{
    return {frm.cbOriginalFileSpecialized,     frm.cbFileTypeOriginalSpecialized,
            frm.cbDoSubfoldersSpecialized,     frm.cbTargetFileSpecialized,
            frm.cbFileTypeOriginalSpecialized, frm.cbSaveToOriginalFolderSpecialized,
            frm.frameTargetFileSpecialized,    frm.cmdLaunchOriginalSpecialized,
            frm.cmdLaunchTargetSpecialized,    {&frm.cmdSelectTargetFileSpecialized},
            frm.colExtensionsSpecialized,      frm.colExtensionsSpecialized,
            frm.sProposedTargetSpecialized};
}

FileFields FieldsOfAction(frmMain& frm)
{
    return bContains(frm.sActionToDo, "C") ? ConversionFields(frm) : SpecializedFields(frm);
}
