// The project: a directory whose kelmar.ini lies over the global one, with
// its Target, test arguments and debug switch, and the chosen one of five
// tool environments, whose missing settings come from templates compiled
// into the resources.
#include "app/IniStore.h"
#include "app/KmApp.h"
#include "edit/FileUtil.h"
#include "resources/KmIds.h"

namespace
{

// The templates of the four environments that have one lie this many ids
// apart, the first this far above the key's own id.
const unsigned kTemplateStride = 28;

CString KeyText(unsigned id)
{
    CString key;
    key.LoadString(id);
    return key;
}

} // namespace

bool CKmApp::GetProjectSetting(unsigned id, CString& value) const
{
    return GetSetting(SECTION_PROJECT, KeyText(id), value);
}

void CKmApp::SetProjectSetting(unsigned id, const char* value)
{
    SetSetting(SECTION_PROJECT, KeyText(id), value);
}

void CKmApp::RemoveProjectString(unsigned id, const char* path)
{
    if (!store)
        return;
    const CString key = KeyText(id);
    store->Remove(SECTION_PROJECT, key);
    if (path)
        store->EraseFileKey(SECTION_PROJECT, key, path);
}

// A stored value is used as it stands, a blank too; a template's blank
// stands for the empty value that a resource string cannot hold.
void CKmApp::GetEnvironmentSetting(unsigned id, CString& value) const
{
    if (GetSetting(m_nEnvironment, KeyText(id), value) || m_nEnvironment == SECTION_OTHER)
        return;
    value.LoadString(id + kTemplateStride * static_cast<unsigned>(m_nEnvironment - 4));
    if (value == " ")
        value.Empty();
}

void CKmApp::SetEnvironmentSetting(const char* key, const char* value)
{
    SetSetting(m_nEnvironment, key, value);
}

// The global file's session does not count in a project. A directory that
// can't be entered drops the project without a message.
void CKmApp::LoadProject(bool lookUp)
{
    if (lookUp && m_strProjectDir.IsEmpty())
        GetProjectSetting(IDS_KEY_PROJECT, m_strProjectDir);
    if (m_strProjectDir.IsEmpty())
        return;
    if (!ChangeDir(m_strProjectDir) || !GetFullPath("kelmar.ini", m_strProjectIni)) {
        m_strProjectDir.Empty();
        return;
    }
    store->RemoveSection(SECTION_SESSION);
    RemoveProjectString(IDS_KEY_PROJECT, m_strProjectIni);
    store->Load(m_strProjectIni);
    SetProjectSetting(IDS_KEY_PROJECT, m_strProjectDir);
}

// An Environment that names none of the five selects the first.
void CKmApp::LoadProjectChoice()
{
    CString value;
    m_bDebugBuild = GetProjectSetting(IDS_KEY_DEBUGBUILD, value) && value == "1";
    if (!GetProjectSetting(IDS_KEY_ENVIRONMENT, value))
        return;
    m_nEnvironment = SECTION_ENVIRONMENT;
    for (int i = 0; i < 5; ++i)
        if (lstrcmpiA(value, m_strEnvironment[i]) == 0)
            m_nEnvironment = SECTION_ENVIRONMENT + i;
}

// With a project open every setting goes to its file, and the store keeps
// only the project key for what the global file gets.
void CKmApp::SaveProject()
{
    if (m_strProjectDir.IsEmpty()) {
        RemoveProjectString(IDS_KEY_PROJECT, iniPath);
        return;
    }
    RemoveProjectString(IDS_KEY_PROJECT, m_strProjectIni);
    SetProjectSetting(IDS_KEY_DEBUGBUILD, m_bDebugBuild ? "1" : "0");
    SetProjectSetting(IDS_KEY_ENVIRONMENT, store->SectionName(m_nEnvironment));
    store->EraseFileSection(SECTION_SESSION, m_strProjectIni);
    store->Save(m_strProjectIni);
    store->RemoveAll();
    SetProjectSetting(IDS_KEY_PROJECT, m_strProjectDir);
}
