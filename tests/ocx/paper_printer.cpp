#include "tests/ocx/paper_printer.h"
// paper_printer.h brings the system headers, which come first
#include <gtest/gtest.h>

#include <fstream>

namespace orvane::test {

namespace {

constexpr wchar_t kDriver[] = L"Orvane paper driver";

/// What the driver for page descriptions reads about a printer: paper of 595 x 842 points with a rim of 18.
constexpr char kDescription[] =
    "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n*LanguageVersion: English\n"
    "*LanguageEncoding: ISOLatin1\n*PCFileName: \"PAPER.PPD\"\n*Manufacturer: \"Paper\"\n*Product: \"(Paper)\"\n"
    "*PSVersion: \"(3010.000) 0\"\n*ModelName: \"Paper\"\n*ShortNickName: \"Paper\"\n*NickName: \"Paper\"\n"
    "*LanguageLevel: \"3\"\n*ColorDevice: True\n*DefaultColorSpace: RGB\n*FileSystem: False\n*TTRasterizer: Type42\n"
    "*OpenUI *PageSize: PickOne\n*DefaultPageSize: A4\n*PageSize A4/A4: \"<</PageSize[595 842]>>setpagedevice\"\n"
    "*CloseUI: *PageSize\n*OpenUI *PageRegion: PickOne\n*DefaultPageRegion: A4\n"
    "*PageRegion A4/A4: \"<</PageSize[595 842]>>setpagedevice\"\n*CloseUI: *PageRegion\n*DefaultImageableArea: A4\n"
    "*ImageableArea A4/A4: \"18 18 577 824\"\n*DefaultPaperDimension: A4\n*PaperDimension A4/A4: \"595 842\"\n"
    "*DefaultResolution: 600dpi\n*OpenUI *InputSlot: PickOne\n*DefaultInputSlot: Auto\n*InputSlot Auto/Auto: \"\"\n"
    "*CloseUI: *InputSlot\n*DefaultFont: Courier\n*Font Courier: Standard \"(002.004S)\" Standard ROM\n";

wchar_t* Text(const wchar_t* text) { return const_cast<wchar_t*>(text); }  // the system's structures are not const

}  // namespace

std::wstring PaperPrinter::FileName(const wchar_t* name) {
    wchar_t folder[MAX_PATH] = L"";
    GetTempPathW(MAX_PATH, folder);
    return folder + std::to_wstring(GetCurrentProcessId()) + name;
}

PaperPrinter::PaperPrinter() {
    std::wstring description = FileName(L"paper.ppd");
    const HANDLE file = CreateFileW(description.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    EXPECT_TRUE(WriteFile(file, kDescription, sizeof kDescription - 1, &written, nullptr));
    CloseHandle(file);
    DRIVER_INFO_3W driver{};
    driver.cVersion = 3;
    driver.pName = Text(kDriver);
    driver.pDriverPath = driver.pConfigFile = Text(L"wineps.drv");
    driver.pDataFile = description.data();
    driver.pDefaultDataType = Text(L"RAW");
    EXPECT_TRUE(AddPrinterDriverExW(nullptr, 3, reinterpret_cast<BYTE*>(&driver), APD_COPY_NEW_FILES | APD_COPY_FROM_DIRECTORY));
    PRINTER_INFO_2W info{};
    info.pPrinterName = Text(kName);
    info.pPortName = Text(L"FILE:");
    info.pDriverName = Text(kDriver);
    info.pPrintProcessor = Text(L"winprint");
    info.pDatatype = Text(L"RAW");
    info.pShareName = info.pComment = info.pLocation = info.pSepFile = info.pParameters = Text(L"");
    printer_ = AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&info));
    EXPECT_NE(printer_, nullptr) << GetLastError();
}

PaperPrinter::~PaperPrinter() {
    DeletePrinter(printer_);
    ClosePrinter(printer_);
    DeletePrinterDriverExW(nullptr, nullptr, Text(kDriver), 0, 0);
    DeleteFileW(FileName(L"paper.ppd").c_str());
}

}  // namespace orvane::test
