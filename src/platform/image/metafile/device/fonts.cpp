// Finds fonts through fontconfig and opens them with FreeType.
#include "src/platform/image/metafile/device/fonts.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>

#include <array>
#include <string_view>
#include <utility>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include FT_TRUETYPE_TABLES_H

// A font lookup takes about as long as painting this many pixels.
static constexpr std::uint64_t kCostOfLookup = 300'000;
static constexpr std::size_t kMaxCachedShapes = 4096;

FontFace::FontFace(FT_FaceRec_* face, bool same_family, bool embolden, double slant)
    : face_(face), same_family_(same_family), embolden_(embolden), slant_(slant)
{
    symbol_map_ = FT_Select_Charmap(face, FT_ENCODING_UNICODE) != 0 &&
                  FT_Select_Charmap(face, FT_ENCODING_MS_SYMBOL) == 0;
    const double em = face->units_per_EM > 0 ? face->units_per_EM : 1000;
    ascent_ = face->ascender / em;
    descent_ = -face->descender / em;
    const auto* metrics = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
    if (metrics && metrics->version != 0xFFFF) {
        if (metrics->usWinAscent + metrics->usWinDescent > 0) {
            ascent_ = metrics->usWinAscent / em;
            descent_ = metrics->usWinDescent / em;
        }
        if (metrics->xAvgCharWidth > 0)
            mean_width_ = metrics->xAvgCharWidth / em;
    }
    if (!(ascent_ + descent_ > 0.1)) {
        ascent_ = 0.9;
        descent_ = 0.2;
    }
    line_height_ = std::max(ascent_ + descent_, face->height / em);
    if (face->underline_thickness > 0) {
        underline_thickness_ = face->underline_thickness / em;
        underline_offset_ = -face->underline_position / em;
    }
}

FontFace::~FontFace()
{
    FT_Done_Face(face_);
}

std::uint32_t FontFace::GlyphOf(char32_t character) const
{
    return FT_Get_Char_Index(face_, character);
}

namespace
{
/// Receives the outline of a glyph from FreeType.
struct OutlineSink {
    Outline& outline;
    double scale;
    Point last;

    Point From(const FT_Vector* point) const
    {
        return {static_cast<double>(point->x) * scale, -static_cast<double>(point->y) * scale};
    }
};
}  // namespace

static int TakeMove(const FT_Vector* to, void* user)
{
    auto& sink = *static_cast<OutlineSink*>(user);
    sink.outline.Close();
    sink.last = sink.From(to);
    sink.outline.MoveTo(sink.last);
    return 0;
}

static int TakeLine(const FT_Vector* to, void* user)
{
    auto& sink = *static_cast<OutlineSink*>(user);
    sink.last = sink.From(to);
    sink.outline.LineTo(sink.last);
    return 0;
}

static int TakeConic(const FT_Vector* control, const FT_Vector* to, void* user)
{
    auto& sink = *static_cast<OutlineSink*>(user);
    const Point control_point = sink.From(control);
    const Point end = sink.From(to);
    // Convert the quadratic curve to a cubic.
    sink.outline.CurveTo(sink.last + (2.0 / 3) * (control_point - sink.last),
                         end + (2.0 / 3) * (control_point - end), end);
    sink.last = end;
    return 0;
}

static int TakeCubic(const FT_Vector* a, const FT_Vector* b, const FT_Vector* to, void* user)
{
    auto& sink = *static_cast<OutlineSink*>(user);
    sink.last = sink.From(to);
    sink.outline.CurveTo(sink.From(a), sink.From(b), sink.last);
    return 0;
}

const GlyphShape& FontFace::Shape(std::uint32_t glyph)
{
    const auto found = shapes_.find(glyph);
    if (found != shapes_.end())
        return found->second;
    if (shapes_.size() >= kMaxCachedShapes)
        shapes_.clear();
    GlyphShape& shape = shapes_[glyph];
    if (FT_Load_Glyph(face_, glyph, FT_LOAD_NO_SCALE | FT_LOAD_NO_BITMAP) != 0)
        return shape;
    FT_GlyphSlot slot = face_->glyph;
    const double scale = 1.0 / (face_->units_per_EM > 0 ? face_->units_per_EM : 1000);
    shape.advance = static_cast<double>(slot->metrics.horiAdvance) * scale;
    if (slot->format != FT_GLYPH_FORMAT_OUTLINE)
        return shape;
    if (embolden_)
        FT_Outline_Embolden(&slot->outline, face_->units_per_EM / 24);
    if (slant_ != 0) {
        const FT_Matrix shear{0x10000, static_cast<FT_Fixed>(slant_ * 0x10000), 0, 0x10000};
        FT_Outline_Transform(&slot->outline, &shear);
    }
    FT_Outline_Funcs functions{TakeMove, TakeLine, TakeConic, TakeCubic, 0, 0};
    OutlineSink sink{shape.outline, scale, {}};
    if (FT_Outline_Decompose(&slot->outline, &functions, &sink) != 0)
        shape.outline.Clear();
    shape.outline.Close();
    return shape;
}

FontCache::~FontCache()
{
    faces_.clear();
    opened_.clear();
    if (library_)
        FT_Done_FreeType(library_);
}

// Modern substitutes for obsolete fonts, and generic families for well-known ones.
static const char* KnownSubstitute(const std::string& face)
{
    static constexpr std::array<std::pair<std::string_view, const char*>, 12> kKnown = {{
        {"Helv", "Arial"},
        {"MS Sans Serif", "Arial"},
        {"MS Shell Dlg", "Arial"},
        {"MS Shell Dlg 2", "Arial"},
        {"Microsoft Sans Serif", "Arial"},
        {"System", "Arial"},
        {"Tms Rmn", "Times New Roman"},
        {"MS Serif", "Times New Roman"},
        {"Fixedsys", "Courier New"},
        {"Terminal", "Courier New"},
        {"Lucida Console", "Courier New"},
        {"Arial Narrow", "Liberation Sans Narrow"},
    }};
    for (const auto& [name, substitute] : kKnown)
        if (face == name)
            return substitute;
    // PostScript names carry the style: Times-Roman, Helvetica-Bold.
    if (face.starts_with("Helvetica"))
        return "Arial";
    if (face.starts_with("Times"))
        return "Times New Roman";
    return face.starts_with("Courier") ? "Courier New" : nullptr;
}

static const char* FamilyOfKind(const Font& font)
{
    const bool fixed = (font.pitch_and_family & 3) == 1;
    const int kind = font.pitch_and_family >> 4;
    if (fixed || kind == 3)
        return "Courier New";
    return kind == 1 ? "Times New Roman" : "Arial";
}

static const FcChar8* AsFcText(const char* text)
{
    return reinterpret_cast<const FcChar8*>(text);
}

namespace
{
struct FcPatternRelease {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
using FcPatternPtr = std::unique_ptr<FcPattern, FcPatternRelease>;
}  // namespace

static FcPatternPtr MatchFont(const Font& font, char32_t character)
{
    const FcPatternPtr pattern(FcPatternCreate());
    if (!pattern)
        return nullptr;
    if (!font.face.empty() && character == 0)
        FcPatternAddString(pattern.get(), FC_FAMILY, AsFcText(font.face.c_str()));
    if (const char* substitute = KnownSubstitute(font.face))
        FcPatternAddString(pattern.get(), FC_FAMILY, AsFcText(substitute));
    FcPatternAddString(pattern.get(), FC_FAMILY, AsFcText(FamilyOfKind(font)));
    const std::int32_t weight = font.weight <= 0 ? 400 : std::clamp(font.weight, 1, 1000);
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, FcWeightFromOpenType(weight));
    FcPatternAddInteger(pattern.get(), FC_SLANT, font.italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    FcPatternAddBool(pattern.get(), FC_OUTLINE, FcTrue);
    FcPatternAddBool(pattern.get(), FC_COLOR, FcFalse);
    if (character != 0) {
        FcCharSet* set = FcCharSetCreate();
        FcCharSetAddChar(set, character);
        FcPatternAddCharSet(pattern.get(), FC_CHARSET, set);
        FcCharSetDestroy(set);
    }
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultNoMatch;
    return FcPatternPtr(FcFontMatch(nullptr, pattern.get(), &result));
}

static bool HasFamily(FcPattern* pattern, const std::string& family)
{
    FcChar8* name = nullptr;
    for (int n = 0; FcPatternGetString(pattern, FC_FAMILY, n, &name) == FcResultMatch; ++n)
        if (FcStrCmpIgnoreCase(name, AsFcText(family.c_str())) == 0)
            return true;
    return false;
}

static std::shared_ptr<FontFace> OpenFace(FT_Library library, const char* file, int index, bool same_family,
                                          bool embolden, double slant)
{
    FT_Face face = nullptr;
    if (FT_New_Face(library, file, index, &face) != 0)
        return nullptr;
    if (!FT_IS_SCALABLE(face)) {
        FT_Done_Face(face);
        return nullptr;
    }
    return std::make_shared<FontFace>(face, same_family, embolden, slant);
}

FontFace* FontCache::FindFace(const std::string& key, const Font& font, char32_t character)
{
    const auto found = faces_.find(key);
    if (found != faces_.end())
        return found->second.get();
    if (!budget_.Spend(kCostOfLookup) || (!library_ && FT_Init_FreeType(&library_) != 0))
        return nullptr;
    std::shared_ptr<FontFace>& kept = faces_[key];
    const FcPatternPtr match = MatchFont(font, character);
    FcChar8* file = nullptr;
    if (!match || FcPatternGetString(match.get(), FC_FILE, 0, &file) != FcResultMatch)
        return nullptr;
    int index = 0;
    FcPatternGetInteger(match.get(), FC_INDEX, 0, &index);
    FcBool embolden = FcFalse;
    FcPatternGetBool(match.get(), FC_EMBOLDEN, 0, &embolden);
    FcMatrix* matrix = nullptr;
    const bool sheared = FcPatternGetMatrix(match.get(), FC_MATRIX, 0, &matrix) == FcResultMatch && matrix;
    const double slant = sheared ? matrix->xy : 0;
    const bool same_family = HasFamily(match.get(), font.face);
    const std::string opened_key = std::string(reinterpret_cast<const char*>(file)) + '\n' +
                                   std::to_string(index) + (embolden != FcFalse ? 'b' : 'r') +
                                   (same_family ? 's' : 'o') + std::to_string(slant);
    std::shared_ptr<FontFace>& opened = opened_[opened_key];
    if (!opened)
        opened = OpenFace(library_, reinterpret_cast<const char*>(file), index, same_family,
                          embolden != FcFalse, slant);
    if (!opened)
        return nullptr;
    kept = opened;
    if (character != 0 && kept->GlyphOf(character) == 0)
        kept.reset();  // fontconfig returns the nearest font even if it lacks the character
    return kept.get();
}

static std::string StyleKey(const Font& font)
{
    return std::to_string(font.weight) + (font.italic ? "i" : "r") +
           std::to_string(font.pitch_and_family & 0xF3);
}

FontFace* FontCache::FaceFor(const Font& font)
{
    return FindFace(font.face + '\n' + StyleKey(font), font, 0);
}

FontFace* FontCache::FaceWith(char32_t character, const Font& font)
{
    // Try fonts opened for other characters first: a text usually stays in one script.
    for (const auto& [key, face] : faces_)
        if (face && key.front() == '\t' && face->GlyphOf(character) != 0)
            return face.get();
    return FindFace('\t' + std::to_string(static_cast<std::uint32_t>(character)) + '\n' + StyleKey(font),
                    font, character);
}
