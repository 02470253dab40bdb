#include "properties/sslcertdlg.h"

#include <windows.h>
#include <commdlg.h>

#include "kit/basedialog.h"
#include "kit/dialogkit.h"
#include "kit/fieldrules.h"
#include "properties/certchoice.h"
#include "properties/certstore_win.h"
#include "properties/properties_rc.h"
#include "request/session.h"

#include <algorithm>

namespace qrl {

namespace {

constexpr TDialogText kSslTexts[] = {
    {kDialogTitleId, {u"IDD_SSL_CERTIFICATE", u"SSL Certificate"}},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
    {IDC_SSL_HELP, kHelpText},
    {IDC_SSL_STORE_TYPE_LABEL, {u"IDC_STATIC_98", u"Store Type:"}},
    {IDC_SSL_STORE_PROMPT, {u"IDC_SSL_STORE_PROMPT", u"Store:"}},
    {IDC_SSL_BROWSE, {u"IDC_BROWSE", u"..."}},
    {IDC_SSL_FILE_PROMPT, {u"IDC_SSL_FILE_PROMPT", u"File:"}},
    {IDC_SSL_PASSWORD_LABEL, {u"IDC_STATIC_99", u"Password:"}},
    {IDC_SSL_CERTIFICATE_LABEL, {u"IDC_STATIC_100", u"Certificate:"}},
};

class SslCertDlg : public TDialog {
public:
    SslCertDlg(const TConfigSession& session, TSslCertificateProperty& property)
        : session_(session), model_(property, certificates_) {}

protected:
    std::span<const TDialogText> Texts() const override { return kSslTexts; }
    INT_PTR OnInit() override;
    INT_PTR OnCommand(int id, int code) override;

private:
    int Selection(int id) const { return static_cast<int>(SendDlgItemMessageW(Window(), id, CB_GETCURSEL, 0, 0)); }
    void ApplyStoreType();
    void ShowStores();
    void ShowCertificates();
    void RefreshAll();
    bool TakeIfModified(int id);
    void Browse();
    void Accept();

    const TConfigSession& session_;
    TPlatformCertificates certificates_;
    TCertDialogModel model_;
};

INT_PTR SslCertDlg::OnInit() {
    for (const std::u16string& row : TCertDialogModel::StoreTypeRows())
        SendDlgItemMessageW(Window(), IDC_SSL_STORE_TYPE, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(row)));
    SendDlgItemMessageW(Window(), IDC_SSL_STORE_TYPE, CB_SETCURSEL, static_cast<WPARAM>(model_.property.storeType), 0);
    ApplyStoreType();
    model_.RefreshStores();
    ShowStores();
    model_.RefreshCertificates();
    ShowCertificates();
    SetControlText(Window(), IDC_SSL_FILE, model_.fileName);
    SetControlText(Window(), IDC_SSL_PASSWORD, model_.property.storePassword);
    return TRUE;
}

void SslCertDlg::ApplyStoreType() {
    const TCertStoreType type = model_.property.storeType;
    const bool system = type == TCertStoreType::System;
    for (int id : {IDC_SSL_STORE_PROMPT, IDC_SSL_STORE}) ShowControl(Window(), id, system);
    for (int id : {IDC_SSL_FILE_PROMPT, IDC_SSL_FILE, IDC_SSL_BROWSE}) ShowControl(Window(), id, !system);
    for (int id : {IDC_SSL_FILE, IDC_SSL_PASSWORD, IDC_SSL_CERTIFICATE, IDC_SSL_BROWSE})
        EnableControl(Window(), id, type != TCertStoreType::None);
}

void SslCertDlg::ShowStores() {
    if (model_.property.storeType != TCertStoreType::System) return;  // the list stays as it was
    SendDlgItemMessageW(Window(), IDC_SSL_STORE, CB_RESETCONTENT, 0, 0);
    for (const std::u16string& store : model_.stores)
        SendDlgItemMessageW(Window(), IDC_SSL_STORE, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(store)));
    SendDlgItemMessageW(Window(), IDC_SSL_STORE, CB_SETCURSEL, static_cast<WPARAM>(model_.storeSelection), 0);
}

void SslCertDlg::ShowCertificates() {
    SendDlgItemMessageW(Window(), IDC_SSL_CERTIFICATE, CB_RESETCONTENT, 0, 0);
    for (const TCertChoice& choice : model_.choices) {
        const std::u16string shortName = latin1ToUtf16(choice.shortName);
        SendDlgItemMessageW(Window(), IDC_SSL_CERTIFICATE, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(shortName)));
    }
    SendDlgItemMessageW(Window(), IDC_SSL_CERTIFICATE, CB_SETCURSEL, static_cast<WPARAM>(model_.certificateSelection), 0);
}

// The edit's modify flag says whether the user changed it since it was last taken.
bool SslCertDlg::TakeIfModified(int id) {
    if (!SendDlgItemMessageW(Window(), id, EM_GETMODIFY, 0, 0)) return false;
    SendDlgItemMessageW(Window(), id, EM_SETMODIFY, FALSE, 0);
    return true;
}

void SslCertDlg::Browse() {
    TOpenFileRequest request;
    request.title = Translate(u"sslcertdlg_cpp_203", u"Select a certificate file");
    request.filter = BuildBrowseFilter(Translate(u"run_cpp_2486", u"All files  (*.*)|*.*||"), u"");
    request.initialFile = model_.fileName;
    request.flags = OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST;
    const std::u16string chosen = ChooseFileToOpen(Window(), request);
    if (chosen.empty()) return;
    model_.fileName = chosen;
    SetControlText(Window(), IDC_SSL_FILE, model_.fileName);
    SendDlgItemMessageW(Window(), IDC_SSL_FILE, EM_SETMODIFY, FALSE, 0);
    model_.RefreshCertificates();
    ShowCertificates();
}

void SslCertDlg::Accept() {
    const std::u16string store = GetControlText(Window(), IDC_SSL_STORE);
    if (model_.Accept(Selection(IDC_SSL_STORE_TYPE), store, GetControlText(Window(), IDC_SSL_FILE),
                      GetControlText(Window(), IDC_SSL_PASSWORD)) ||
        MessageBoxW(Window(), L"No certificate has been selected. Are you sure?", L"Quorl4",
                    MB_OKCANCEL | MB_ICONQUESTION) == IDOK)
        End(IDOK);
}

INT_PTR SslCertDlg::OnCommand(int id, int code) {
    switch (id) {
    case IDC_SSL_STORE_TYPE:
        if (code != CBN_SELCHANGE) return TRUE;
        model_.ChooseStoreType(Selection(IDC_SSL_STORE_TYPE));
        ApplyStoreType();
        ShowStores();
        ShowCertificates();
        return TRUE;
    case IDC_SSL_STORE:
        if (code != CBN_SELCHANGE) return TRUE;
        model_.ChooseStore(GetControlText(Window(), IDC_SSL_STORE));
        ShowCertificates();
        return TRUE;
    case IDC_SSL_CERTIFICATE:
        if (code == CBN_SELCHANGE) model_.ChooseCertificate(Selection(IDC_SSL_CERTIFICATE));
        return TRUE;
    case IDC_SSL_FILE:
        // The file's text is not taken here: the listing shows the old file until browsing.
        if (code == EN_KILLFOCUS && TakeIfModified(IDC_SSL_FILE)) {
            model_.RefreshCertificates();
            ShowCertificates();
        }
        return TRUE;
    case IDC_SSL_PASSWORD:
        if (code == EN_KILLFOCUS && TakeIfModified(IDC_SSL_PASSWORD)) {
            model_.property.storePassword = GetControlText(Window(), IDC_SSL_PASSWORD);
            if (model_.property.storeType != TCertStoreType::System) {
                model_.RefreshCertificates();
                ShowCertificates();
            }
        }
        return TRUE;
    default: break;
    }
    if (code != BN_CLICKED) return FALSE;
    switch (id) {
    case IDC_SSL_BROWSE: Browse(); return TRUE;
    case IDC_SSL_HELP: session_.ShowHelp(u"ssl_certificate"); return TRUE;
    case IDCANCEL: End(IDCANCEL); return TRUE;
    case IDOK: Accept(); return TRUE;
    default: return FALSE;
    }
}

}  // namespace

bool EditSslCertificate(HWND parent, TConfigSession& session, TElementDef& element) {
    TSslCertificateProperty property;
    property.Parse(element.value);
    SslCertDlg dialog(session, property);
    if (dialog.RunModal(parent, IDD_SSL_CERTIFICATE) != IDOK) return false;
    element.value = property.ToText();
    return true;
}

}  // namespace qrl
