// Image operations that change nothing and record calls.
// Room: tests/fakes.
#pragma once

#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "src/platform/image_transform.h"

class RecordingImageTransform : public ImageTransform
{
public:
    std::vector<std::string> calls;  ///< all operations, such as "Resize 100 50 0 0", in order
    bool fail = false;               ///< makes every operation fail
    std::function<void()> on_apply;  ///< called in Apply

    OperationResult Apply(const OperationCall& call, const ImageBuffer& source, ImageBuffer& result) override
    {
        std::string text(call.sName);
        for (const OperationArgument& argument : call.aArguments)
            text += " " + std::visit([](auto value) { return Text(value); }, argument);
        calls.push_back(text);
        if (on_apply)
            on_apply();
        if (fail)
            return OperationResult::Failed;
        if (&source != &result)
            result = source;
        return OperationResult::Changed;
    }
    void GetMaskBytes(const ImageBuffer&, ImageBuffer& mask) override
    {
        calls.push_back("GetMaskBytes");
        mask = {};
    }

private:
    static std::string Text(bool value) { return value ? "True" : "False"; }
    static std::string Text(std::int32_t value) { return std::to_string(value); }
    static std::string Text(std::uint8_t value) { return std::to_string(value); }
    static std::string Text(double value)
    {
        std::string result = std::to_string(value);
        result.erase(result.find_last_not_of('0') + 1);
        return result + (result.back() == '.' ? "0" : "");
    }
};
