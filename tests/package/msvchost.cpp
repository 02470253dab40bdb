// Linked the Microsoft way against qrl4cfg.lib alone: every export resolves under its decorated name.
struct HWND__;
extern "C" __declspec(dllimport) int fnRunConfig2W(wchar_t*, HWND__*, wchar_t*, unsigned long long, unsigned*);
__declspec(dllimport) int fnRunConfigW(wchar_t*, HWND__*, wchar_t*, unsigned int);
class __declspec(dllimport) CQRLCONFIG { public: CQRLCONFIG& operator=(const CQRLCONFIG&); };

extern "C" int mainCRTStartup() {
    CQRLCONFIG a, b;
    a = b;
    return fnRunConfig2W(nullptr, nullptr, nullptr, 0, nullptr) + fnRunConfigW(nullptr, nullptr, nullptr, 0);
}
