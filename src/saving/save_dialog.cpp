#include "saving/save_dialog.h"

#include <cwchar>

#include "menu/menu.h"
#include "saving/auto_save.h"
#include "shell/base/state.h"
#include "shell/base/surfaces.h"
#include "shell/lockdown.h"
#include "shell/window_order.h"

// Raises the dialog above the surfaces. The first folder change arrives as the dialog opens, when it has
// a window.
class SaveDialogZOrderFix final : public IFileDialogEvents {
  public:
    STDMETHODIMP QueryInterface(REFIID id, void **out) override
    {
        if (!out) return E_POINTER;
        *out = nullptr;
        if (!IsEqualIID(id, IID_IUnknown) && !IsEqualIID(id, IID_IFileDialogEvents)) return E_NOINTERFACE;
        *out = static_cast<IFileDialogEvents *>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override
    {
        const ULONG left = --references;
        if (left == 0) delete this;
        return left;
    }
    STDMETHODIMP OnFileOk(IFileDialog *) override { return S_OK; }
    STDMETHODIMP OnFolderChanging(IFileDialog *, IShellItem *) override { return S_OK; }
    STDMETHODIMP OnFolderChange(IFileDialog *dialog) override
    {
        if (raised || !dialog) return S_OK;
        IOleWindow *oleWindow = nullptr;
        if (FAILED(dialog->QueryInterface(IID_PPV_ARGS(&oleWindow)))) return S_OK;
        HWND window = nullptr;
        const HRESULT result = oleWindow->GetWindow(&window);
        oleWindow->Release();
        if (FAILED(result)) return S_OK;
        raised = true;
        SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
        AllowSetForegroundWindow(ASFW_ANY);
        SetForegroundWindow(window);
        return S_OK;
    }
    STDMETHODIMP OnSelectionChange(IFileDialog *) override { return S_OK; }
    STDMETHODIMP OnShareViolation(IFileDialog *, IShellItem *, FDE_SHAREVIOLATION_RESPONSE *) override
    {
        return S_OK;
    }
    STDMETHODIMP OnTypeChange(IFileDialog *) override { return S_OK; }
    STDMETHODIMP OnOverwrite(IFileDialog *, IShellItem *, FDE_OVERWRITE_RESPONSE *) override { return S_OK; }

  private:
    ULONG references = 1;
    bool raised = false;
};

// The dialog's hidden owner, created on first use. A surface cannot be the owner: a modal dialog disables
// it, and the child plays on.
static HWND dialogHostWindow = nullptr;
static bool hostClassRegistered = false;

static bool makeDialogHost()
{
    if (IsWindow(dialogHostWindow)) return true;
    if (!hostClassRegistered) {
        WNDCLASSEXW hostClass = {};
        hostClass.cbSize = sizeof hostClass;
        hostClass.lpfnWndProc = DefWindowProcW;
        hostClass.hInstance = programInstance;
        hostClass.lpszClassName = L"ZubblyDialogHost";
        hostClassRegistered = RegisterClassExW(&hostClass) != 0;
    }
    dialogHostWindow = CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, L"ZubblyDialogHost", L"", WS_POPUP,
                                       0, 0, 1, 1, nullptr, nullptr, programInstance, nullptr);
    return dialogHostWindow != nullptr;
}

void destroyDialogHost()
{
    if (dialogHostWindow) DestroyWindow(dialogHostWindow);
    dialogHostWindow = nullptr;
}

static void suggestName(IFileSaveDialog *dialog)
{
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    wchar_t name[64] = {};
    std::swprintf(name, std::size(name), L"zubclick_%04u%02u%02u_%02u%02u.png", unsigned(now.wYear),
                  unsigned(now.wMonth), unsigned(now.wDay), unsigned(now.wHour), unsigned(now.wMinute));
    dialog->SetFileName(name);
}

static void startInPictures(IFileSaveDialog *dialog)
{
    PWSTR path = nullptr;
    if (FAILED(SHGetKnownFolderPath(FOLDERID_Pictures, 0, nullptr, &path))) return;
    IShellItem *folder = nullptr;
    if (SUCCEEDED(SHCreateItemFromParsingName(path, nullptr, IID_PPV_ARGS(&folder)))) {
        dialog->SetFolder(folder);
        folder->Release();
    }
    CoTaskMemFree(path);
}

static void setUpDialog(IFileSaveDialog *dialog)
{
    const COMDLG_FILTERSPEC types[] = {{L"PNG Files", L"*.png"}};
    dialog->SetFileTypes(1, types);
    dialog->SetDefaultExtension(L"png");
    suggestName(dialog);
    FILEOPENDIALOGOPTIONS options = 0;
    dialog->GetOptions(&options);
    dialog->SetOptions(options | FOS_OVERWRITEPROMPT | FOS_FORCEFILESYSTEM);
    startInPictures(dialog);
}

// The dialog opens over its owner, so this moves both to the monitor under the cursor.
static void placeHost()
{
    POINT cursor = {};
    MONITORINFO info = {};
    info.cbSize = sizeof info;
    GetCursorPos(&cursor);
    if (GetMonitorInfoW(MonitorFromPoint(cursor, MONITOR_DEFAULTTONEAREST), &info)) {
        const RECT &work = info.rcWork;
        SetWindowPos(dialogHostWindow, HWND_TOPMOST, (work.left + work.right) / 2,
                     (work.top + work.bottom) / 2, 1, 1, SWP_NOACTIVATE);
    }
    ShowWindow(dialogHostWindow, SW_SHOWNA);
}

// Timers and input of the surfaces continue in the dialog's own message loop. It may even shut the program
// down, or open and close a second dialog.
static bool runDialog(IFileSaveDialog *dialog)
{
    auto *zOrderFix = new SaveDialogZOrderFix;
    DWORD cookie = 0;
    dialog->Advise(zOrderFix, &cookie);
    dialogShowing = true;
    const HRESULT result = dialog->Show(dialogHostWindow);
    dialogShowing = false;
    dialog->Unadvise(cookie);
    zOrderFix->Release();
    return SUCCEEDED(result);
}

static bool writeResult(IFileSaveDialog *dialog, HBITMAP canvases)
{
    IShellItem *item = nullptr;
    if (FAILED(dialog->GetResult(&item))) return false;
    bool written = false;
    PWSTR path = nullptr;
    if (SUCCEEDED(item->GetDisplayName(SIGDN_FILESYSPATH, &path))) {
        const OwnedPicture picture = pictureOf(canvases);
        written = picture && writePng(picture.get(), path);
        CoTaskMemFree(path);
    }
    item->Release();
    return written;
}

bool showSaveDialog()
{
    // Captured first: the file shows the moment of the key press.
    HBITMAP canvases = captureCanvases();
    if (!canvases) return false;
    IFileSaveDialog *dialog = nullptr;
    if (!makeDialogHost() || FAILED(CoCreateInstance(CLSID_FileSaveDialog, nullptr, CLSCTX_INPROC_SERVER,
                                                     IID_PPV_ARGS(&dialog)))) {
        DeleteObject(canvases);
        return false;
    }
    setUpDialog(dialog);
    placeHost();
    const bool accepted = runDialog(dialog);
    ShowWindow(dialogHostWindow, SW_HIDE);
    refreshTopmost();
    restoreSurfaces();
    const bool written = accepted && writeResult(dialog, canvases);
    dialog->Release();
    DeleteObject(canvases);
    if (primaryWindow()) {
        AllowSetForegroundWindow(ASFW_ANY);
        SetForegroundWindow(primaryWindow());
    }
    confineCursor();
    return written;
}

void restoreSurfaces()
{
    for (const MonitorSurface &surface : surfaces) {
        if (!surface.hwnd) continue;
        EnableWindow(surface.hwnd, TRUE);
        showWholeWindow(surface);
        if (!surface.canvasDC) continue;
        HDC windowDC = GetDC(surface.hwnd);
        BitBlt(windowDC, 0, 0, surface.width, surface.height, surface.canvasDC, 0, 0, SRCCOPY);
        drawMenu(windowDC, surface.rect);
        ReleaseDC(surface.hwnd, windowDC);
    }
    confineCursor();
}
