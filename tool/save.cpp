#include "save.h"

#include "convert/binary_dxf.h"
#include "drawing/drawing.h"
#include "drawing/dump.h"
#include "dx_additions.h"
#include "dx_select.h"
#include "environment.h"
#include "file_kind.h"
#include "keep.h"
#include "load.h"
#include "progress.h"
#include "protocol.h"
#include "services/session.h"
#include "streams.h"
#include "tell.h"
#include "ut.h"
#include "words.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>
#include <unistd.h>

namespace tool {

namespace {

constexpr int kColors = 255;

/// Pairs of the template file, which holds TABLES only, in UTF-8.
class TemplateWriter {
public:
    explicit TemplateWriter(const std::string& path) : out_(path) { out_.precision(16); }

    bool write(const host::Drawing& drawing, const SourceScan& scan) {
        pair(0, "SECTION");
        pair(2, "TABLES");
        table("LTYPE");
        for (const auto& [number, type] : drawing.lineTypes)
            if (number != 1) lineType(type, drawing, scan);
        pair(0, "ENDTAB");
        table("LAYER");
        for (const SourceLayer& source : scan.layers) {
            const host::Layer* own = drawing.findLayer(source.name);
            own && own->look.color ? layer(*own) : layer(source);
        }
        for (const host::Layer& own : drawing.layers) layer(own);
        pair(0, "ENDTAB");
        pair(0, "ENDSEC");
        pair(0, "EOF");
        return static_cast<bool>(out_.flush());
    }

private:
    template <class T>
    void pair(int code, const T& value) {
        out_ << code << '\n' << value << '\n';
    }
    /// A text is one line, whatever it holds.
    void pair(int code, std::string value) {
        std::replace_if(
            value.begin(), value.end(), [](char c) { return c == '\n' || c == '\r' || c == 0; }, ' ');
        out_ << code << '\n' << value << '\n';
    }
    void table(const char* name) {
        pair(0, "TABLE");
        pair(2, name);
        pair(70, 1);
    }

    /// Dashes of the host are millimetres on the sheet; the file's are in drawing units, scaled by $LTSCALE.
    void lineType(const host::LineType& type, const host::Drawing& drawing, const SourceScan& scan) {
        const double sheet =
            host::unitInMm(drawing) * drawing.scale * (scan.lineTypeScale > 0 ? scan.lineTypeScale : 1);
        double length = 0;
        const std::size_t count = std::min<std::size_t>(type.dashes.size(), 12);
        for (std::size_t i = 0; i < count; ++i) length += std::fabs(type.dashes[i] / sheet);
        pair(0, "LTYPE");
        pair(2, type.name);
        pair(70, 0);
        pair(3, descriptionOf(type.name, scan));
        pair(72, 65);
        pair(73, count);
        pair(40, length);
        for (std::size_t i = 0; i < count; ++i) pair(49, type.dashes[i] / sheet);
    }

    static std::string descriptionOf(const std::string& name, const SourceScan& scan) {
        const auto known = std::find_if(scan.lineTypes.begin(), scan.lineTypes.end(),
                                        [&](const SourceLineType& type) { return type.name == name; });
        return known == scan.lineTypes.end() ? std::string() : known->description;
    }

    void layer(const SourceLayer& source) {
        const std::string name = source.name;
        if (!written_.insert(name).second) return;
        pair(0, "LAYER");
        pair(2, name);
        pair(70, source.flags & 7);
        pair(62, source.color);
        pair(6, source.lineType.empty() ? "CONTINUOUS" : source.lineType);
        pair(290, source.plot);
        pair(370, source.lineWeight);
    }

    void layer(const host::Layer& own) {
        if (!written_.insert(own.name).second) return;
        pair(0, "LAYER");
        pair(2, own.name);
        const host::LayerLook& look = own.look;
        const int color = look.color ? look.color : 7;
        pair(70, (own.locked ? 4 : 0) | (look.frozen ? 1 : 0));
        pair(62, own.visible || look.frozen ? color : -color);
        if (look.trueColor >= 0) pair(420, look.trueColor);
        pair(6, look.lineType.empty() ? "CONTINUOUS" : look.lineType);
        pair(290, look.plotted ? 1 : 0);
        pair(370, look.lineWeight);
    }

    std::ofstream out_;
    std::set<std::string> written_;
};

std::string shortest(double value) {
    std::array<char, 32> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return {text.data(), end};
}

/// What keep.dxd needs besides: the version, and the way back of each pen and line type.
DxConfigAdditions exportAdditions(const host::Drawing& drawing, const SourceScan& scan,
                                  const std::string& format, const std::string& templateFile) {
    DxConfigAdditions added;
    if (!format.empty()) added.flags.emplace_back("VERSION", format);
    if (drawing.unitAssumed) added.flags.emplace_back("WRITE_INSUNITS", "0");
    added.flags.emplace_back("USE_TEMPLATE", "1");
    added.flags.emplace_back("TEMPLATE_NAME", templateFile);
    if (scan.lineTypeScale > 0)
        added.flags.emplace_back("LT_SCALE",
                                 shortest(scan.lineTypeScale * host::unitInMm(drawing) * drawing.scale / 10));
    for (const char* section : {"#PEN-CAD-TO-DXF", "#FILL-CAD-TO-DXF"})
        for (int color = 1; color <= kColors; ++color)
            added.rows.push_back({section, std::to_string(color), std::to_string(color)});
    added.rows.push_back({"#LT-CAD-TO-DXF", "1", "CONTINUOUS"});
    for (const auto& [number, type] : drawing.lineTypes)
        if (number != 1) added.rows.push_back({"#LT-CAD-TO-DXF", std::to_string(number), type.name});
    return added;
}

bool prepareKeeping(const Loaded& source, const Options& options, const TemporaryFolder& folder) {
    const host::Drawing& drawing = host::openDrawing();
    const std::string templateFile = folder.file("template.dxf");
    const std::string config = dataFile("keep.dxd");
    if (::access(config.c_str(), R_OK) != 0 || !TemplateWriter(templateFile).write(drawing, source.scan))
        return false;
    DxSetConfigAdditions(exportAdditions(drawing, source.scan, options.format, templateFile));
    host::session().texts["$DxfConfig"] = config;
    return true;
}

} // namespace

bool isUsableTarget(const std::string& input, const std::string& target, const std::string& purpose) {
    const std::string wrong = whyNotTarget(input, target, purpose);
    if (!wrong.empty()) fail(wrong);
    return wrong.empty();
}

int saveDxf(const std::string& name, const Loaded& source, const Options& options) {
    const TemporaryFolder folder;
    const bool toStream = isStream(name);
    const std::string target = toStream ? folder.file("output.dxf") : name;
    host::Session& session = host::session();
    session.messageArea.clear();
    session.dialogs.clear();
    setUserVariables(options); // the import has used them up
    const bool keeps = options.read.config.empty() && !options.read.plain;
    if (const std::string wrong = whyNoConfig(options); !wrong.empty()) return fail(wrong);
    if (keeps && !prepareKeeping(source, options, folder))
        return fail(words::say("can't prepare the configuration of the export"));
    if (!keeps && !options.read.config.empty()) session.texts["$DxfConfig"] = options.read.config;
    if (UtPathExt(target).str() == "dwg" && session.dwgConverter.empty())
        return fail(missingConverter(target));
    if (toStream && host::countDrawing(host::openDrawing()).bitmaps > 0)
        std::cerr << name << ": " << words::tr("pictures stand beside a DXF file; a stream has none") << '\n';
    const RunFiles files(folder);
    std::error_code ignored;
    const bool isNew = !std::filesystem::exists(target, ignored);
    DxfSelect(0, options.read.threeD ? DX_EXPORT_3D : DX_EXPORT_2D, target);
    hideProgress();
    if (!options.quiet) {
        for (const DxReportMessage& message : DxGetExportReport().messages)
            if (options.verbose || message.level > 0) std::cerr << name << ": " << message.text << '\n';
        for (const std::string& line : pictureFaults()) std::cerr << name << ": " << line << '\n';
        for (const std::string& line : session.dialogs) std::cerr << name << ": " << line << '\n';
    }
    const int stat = static_cast<int>(session.numbers["&DxfStat"]);
    if (stat != 0 && isNew) std::filesystem::remove(target, ignored); // the module leaves what it has
    if (stat == 0 && options.binary) {
        if (const std::string error = host::makeBinaryDxf(target); !error.empty())
            return fail(name, words::retold(error));
    }
    if (stat == 0 && (!toStream || copyToStream(target, name))) return STATUS_DONE;
    if (stat == 0 && name == "-") return STATUS_FAILED;
    const std::string why = stat == 0 ? words::say("can't be written") : whyNotWritable(name);
    return fail(name, why.empty() ? words::say("the export ended with error {}", stat) : why);
}

} // namespace tool
