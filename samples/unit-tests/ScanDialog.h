// A dialog of a product, as far as it records its use.
#pragma once

#include <Lumeq/LumeqApi.h>

#include <string>

class ScanDialog {
public:
    void Open();
    void ChooseTheme(const std::wstring& theme);
    void PressScan();
    void ScanEnds(bool isSuccess, int pages);
    void PressClose();

private:
    std::wstring _theme;
    Zuvan::Lumeq::API::TaskHandle _scan = nullptr;
};
