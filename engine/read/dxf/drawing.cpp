#include "read/dxf/drawing.h"

#include "HalvornEngine.h"
#include "base/text.h"
#include "base/utf8.h"

namespace halvorn::engine::dxf {

namespace {

// Far more than any drawing of a section has; bounds the memory that a hostile file takes.
constexpr std::size_t kMostEntities = 200000;

// Goes through the text once, one group ahead.
class PartFinder {
public:
    PartFinder(std::string_view text, const std::string& source)
        : reader_(text, source), source_(source) {}

    Drawing Find() {
        bool hasEntities = false;
        while (reader_.Next(group_)) {
            if (IsStart("EOF")) {
                drawing_.hasEnd = true;
                break;
            }
            if (!IsStart("SECTION")) {
                Refuse(source_, group_.line,
                       "expected a section of a DXF file, found '" + Excerpt(group_.value) + "'",
                       kExportAnew);
            }
            Advance();
            if (group_.code != 2)
                Refuse(source_, group_.line, "a section has no name", kExportAnew);
            section_ = group_.value;
            hasEntities = hasEntities || section_ == "ENTITIES";
            ReadSection();
        }
        if (!hasEntities) throw InputError(source_, "it has no section ENTITIES", kExportAnew);
        return std::move(drawing_);
    }

private:
    bool IsStart(std::string_view kind) const { return group_.code == 0 && group_.value == kind; }

    void Advance() {
        if (reader_.Next(group_)) return;
        Refuse(source_, reader_.Line(), "the text ends within the section " + Excerpt(section_),
               kExportAnew);
    }

    void ReadSection() {
        Advance();
        while (!IsStart("ENDSEC")) {
            if (section_ == "HEADER") {
                ReadVariable();
            } else if (section_ == "TABLES" && IsStart("LAYER")) {
                ReadLayer();
            } else if (section_ == "BLOCKS" && IsStart("BLOCK")) {
                ReadBlock();
            } else if (section_ == "ENTITIES") {
                ReadEntity(drawing_.entities);
            } else if (section_ == "OBJECTS" && group_.code == 0) {
                ReadObject();
            } else {
                Advance();
            }
        }
    }

    void ReadVariable() {
        const bool isUnit = group_.code == 9 && group_.value == "$INSUNITS";
        Advance();
        if (isUnit && group_.code == 70) drawing_.unitCode = WholeValue(group_, source_);
    }

    // Layers are switched off by a negative colour and frozen by the first bit of their flags.
    void ReadLayer() {
        std::string name;
        bool isHidden = false;
        for (Advance(); group_.code != 0; Advance()) {
            if (group_.code == 2) name = group_.value;
            if (group_.code == 70) isHidden = isHidden || WholeValue(group_, source_) % 2 != 0;
            if (group_.code == 62) isHidden = isHidden || WholeValue(group_, source_) < 0;
        }
        drawing_.layers[InCapitals(name)] = {name, isHidden};
    }

    void ReadObject() {
        drawing_.clipping.Begin(group_.value);
        for (Advance(); group_.code != 0; Advance()) drawing_.clipping.Take(group_);
    }

    void ReadBlock() {
        std::string name;
        Block block;
        for (Advance(); group_.code != 0; Advance()) {
            if (group_.code == 2) name = InCapitals(group_.value);
            if (group_.code == 10) block.baseX = RealValue(group_, source_);
            if (group_.code == 20) block.baseY = RealValue(group_, source_);
        }
        while (!IsStart("ENDBLK")) {
            if (IsStart("ENDSEC")) {
                Refuse(source_, group_.line, "the block " + Excerpt(name) + " has no end",
                       kExportAnew);
            }
            ReadEntity(block.entities);
        }
        Advance();
        drawing_.blocks[name] = std::move(block);
    }

    void ReadEntity(std::vector<Entity>& entities) {
        if (group_.code != 0) {
            Refuse(source_, group_.line, "a group stands before the first entity", kExportAnew);
        }
        if (++count_ > kMostEntities) {
            Refuse(source_, group_.line, "more than 200000 entities",
                   "keep only the section in the drawing");
        }
        Entity entity{group_.value, reader_.Rest(), "0", group_.line, false, false, {}};
        OwnedDictionary owned;
        std::size_t after = entity.body.size();
        for (Advance(); group_.code != 0; Advance()) {
            if (group_.code == 8) entity.layer = group_.value;
            if (group_.code == 67) entity.isInPaperSpace = WholeValue(group_, source_) != 0;
            if (group_.code == 60) entity.isInvisible = WholeValue(group_, source_) != 0;
            owned.Take(group_);
            after = reader_.Rest().size();
        }
        entity.dictionary = owned.Handle();
        drawing_.layers.try_emplace(InCapitals(entity.layer), Layer{std::string(entity.layer)});
        entity.body.remove_suffix(after);
        entities.push_back(entity);
    }

    GroupReader reader_;
    const std::string& source_;
    Drawing drawing_;
    Group group_;
    std::string_view section_;
    std::size_t count_ = 0;
};

}  // namespace

Drawing FindParts(std::string_view text, const std::string& source) {
    if (text.starts_with("AC10")) {
        throw InputError(source, "it is a DWG drawing", "save it as ASCII DXF");
    }
    if (text.starts_with("AutoCAD Binary DXF")) {
        throw InputError(source, "it is a binary DXF file", "save the drawing as ASCII DXF");
    }
    return PartFinder(WithoutByteOrderMark(text), source).Find();
}

}  // namespace halvorn::engine::dxf
