// A printer of 600 dots an inch that prints into files, there for the time of a test.
#pragma once

#include <windows.h>
// windows.h comes first
#include <winspool.h>

#include <string>

namespace orvane::test {

class PaperPrinter {
public:
    PaperPrinter();
    ~PaperPrinter();
    PaperPrinter(const PaperPrinter&) = delete;
    PaperPrinter& operator=(const PaperPrinter&) = delete;

    static constexpr int kDpi = 600;
    /// Its name, which CreateDC takes.
    static constexpr wchar_t kName[] = L"Orvane paper";
    /// A file of its own, to describe the printer or to print into.
    static std::wstring FileName(const wchar_t* name);

private:
    HANDLE printer_ = nullptr;
};

/// A context of the printer or about it, deleted in the end.
class PrinterDc {
public:
    explicit PrinterDc(HDC given) : dc(given) {}
    ~PrinterDc() { DeleteDC(dc); }
    PrinterDc(const PrinterDc&) = delete;
    PrinterDc& operator=(const PrinterDc&) = delete;
    static HDC Information() { return CreateICW(nullptr, PaperPrinter::kName, nullptr, nullptr); }
    static HDC Page() { return CreateDCW(nullptr, PaperPrinter::kName, nullptr, nullptr); }
    int Cap(int index) const { return GetDeviceCaps(dc, index); }
    int DotPerM() const { return Cap(HORZRES) * 1000 / Cap(HORZSIZE); }
    /// As members take it.
    int Number() const { return static_cast<int>(reinterpret_cast<LONG_PTR>(dc)); }

    HDC dc;
};

}  // namespace orvane::test
