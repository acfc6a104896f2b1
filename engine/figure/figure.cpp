#include "figure/figure.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <random>
#include <stdexcept>

#include "HalvornEngine.h"
#include "base/text.h"
#include "figure/layout.h"
#include "figure/paint.h"
#include "figure/stress_picture.h"

namespace halvorn::engine {

namespace {

namespace fs = std::filesystem;

figure::Format FormatOf(const std::string& path) {
    const std::string ending = InSmallLetters(fs::path(path).extension().string());
    if (ending == ".svg") return figure::Format::Svg;
    if (ending == ".png") return figure::Format::Png;
    if (ending == ".pdf") return figure::Format::Pdf;
    throw InputError(path, "a figure is an .svg, .png or .pdf file",
                     "give its name one of these endings");
}

[[noreturn]] void FailToWrite(const std::string& path, const std::string& why) {
    throw std::runtime_error(path + ": the figure cannot be written: " + why +
                             "; check the disk and the permissions of its folder");
}

// A file beside the target under a name of its own; gone unless it was moved to the target.
class PartFile {
public:
    explicit PartFile(const std::string& target)
        : target_(target), name_(target + "." + std::to_string(std::random_device{}()) + ".part") {
        errno = 0;
        file_ = std::fopen(name_.c_str(), "wbx");
        if (file_ == nullptr) FailToWrite(target_, std::strerror(errno));
    }
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;
    ~PartFile() {
        if (file_ != nullptr) std::fclose(file_);
        std::error_code ignored;
        if (!isMoved_) fs::remove(name_, ignored);
    }

    void Write(const std::string& bytes) {
        errno = 0;
        const bool isWritten = std::fwrite(bytes.data(), 1, bytes.size(), file_) == bytes.size();
        const bool isClosed = std::fclose(file_) == 0;
        file_ = nullptr;
        if (!isWritten || !isClosed) FailToWrite(target_, std::strerror(errno));
    }

    void MoveToTarget() {
        std::error_code error;
        fs::rename(name_, target_, error);
        if (error) FailToWrite(target_, error.message());
        isMoved_ = true;
    }

private:
    std::string target_;
    std::string name_;
    std::FILE* file_ = nullptr;
    bool isMoved_ = false;
};

std::string FigureBytes(const Report& report, figure::Format format, const FigureOptions& options) {
    std::optional<figure::StressPicture> stress;
    if (options.stress) stress = figure::StressPictureOf(report, *options.stress);
    const figure::Page page =
        figure::LayOut(report, figure::FontMeasure(format), options, stress ? &*stress : nullptr);
    return figure::Paint(page, format);
}

}  // namespace

void CheckFigurePath(const std::string& path) {
    if (!figure::CanPaint(FormatOf(path))) {
        throw InputError(path, "this build draws .svg files only",
                         "name one, or install libcairo2-dev and pkg-config, then configure and "
                         "build again");
    }
    const fs::path folder = fs::path(path).parent_path();
    std::error_code ignored;
    if (!folder.empty() && !fs::is_directory(folder, ignored)) {
        throw InputError(path, "there is no folder " + folder.string(), "make it first");
    }
    if (fs::is_directory(path, ignored)) {
        throw InputError(path, "is a folder", "name a file");
    }
}

void WriteFigure(const Report& report, const std::string& path, const FigureOptions& options) {
    CheckFigurePath(path);
    const std::string bytes = FigureBytes(report, FormatOf(path), options);
    PartFile file(path);
    file.Write(bytes);
    file.MoveToTarget();
}

std::string SvgText(const Report& report, const FigureOptions& options) {
    return FigureBytes(report, figure::Format::Svg, options);
}

}  // namespace halvorn::engine
