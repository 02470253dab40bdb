// A host as the Microsoft toolchain builds it, with no runtime: the exports under their decorated
// names through qrl4cfg.lib. Both entry points refuse an empty request; the assignment returns this.
struct HWND__;
extern "C" __declspec(dllimport) int fnRunConfig2W(wchar_t*, HWND__*, wchar_t*, unsigned long long, unsigned*);
__declspec(dllimport) int fnRunConfigW(wchar_t*, HWND__*, wchar_t*, unsigned int);
class __declspec(dllimport) CQRLCONFIG {
public:
    CQRLCONFIG& operator=(const CQRLCONFIG&);
};

extern "C" int mainCRTStartup() {
    CQRLCONFIG a, b;
    unsigned status = 99;
    const int codes = fnRunConfig2W(nullptr, nullptr, nullptr, 0, &status) + fnRunConfigW(nullptr, nullptr, nullptr, 0);
    return codes == 1260 && status == 0 && &(a = b) == &a ? 0 : 1;
}
