// SPDX-License-Identifier: MIT
#include <vexagpx/picture/CairoPainter.h>

#include <vexagpx/picture/Palette.h>

#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <cairo.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <memory>
#include <numbers>
#include <stdexcept>
#include <utility>

namespace vexagpx {

namespace {

struct Deleter {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* context) const { cairo_destroy(context); }
    void operator()(PangoLayout* layout) const { g_object_unref(layout); }
    void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
};
using Surface = std::unique_ptr<cairo_surface_t, Deleter>;
using Context = std::unique_ptr<cairo_t, Deleter>;
using Layout = std::unique_ptr<PangoLayout, Deleter>;
using Font = std::unique_ptr<PangoFontDescription, Deleter>;

// A pixel is so many points of a printed page.
constexpr double kPointsOfPixel = 0.75;

void Check(cairo_status_t status) {
    if (status != CAIRO_STATUS_SUCCESS)
        throw std::runtime_error(std::string("The picture could not be drawn: ") +
                                 cairo_status_to_string(status) + ".");
}

/// A layout whose texts have the same widths in every format.
Layout MakeLayout(cairo_t* context) {
    Layout layout(pango_cairo_create_layout(context));
    PangoContext* const pango = pango_layout_get_context(layout.get());
    cairo_font_options_t* const options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    pango_cairo_context_set_font_options(pango, options);
    cairo_font_options_destroy(options);
    pango_cairo_context_set_resolution(pango, 96.0);
    pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
    pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_END);
    return layout;
}

void SetText(PangoLayout* layout, const std::string& text, double size, bool isBold) {
    const Font font(pango_font_description_new());
    pango_font_description_set_family(font.get(), "DejaVu Sans");
    pango_font_description_set_absolute_size(font.get(), size * PANGO_SCALE);
    pango_font_description_set_weight(font.get(), isBold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_layout_set_font_description(layout, font.get());
    pango_layout_set_width(layout, -1);
    pango_layout_set_text(layout, text.data(), static_cast<int>(std::min<std::size_t>(text.size(), 4000)));
}

double WidthOf(PangoLayout* layout) {
    PangoRectangle logical;
    pango_layout_get_extents(layout, nullptr, &logical);
    return static_cast<double>(logical.width) / PANGO_SCALE;
}

/// Paints shapes on a surface.
class Painter {
public:
    explicit Painter(cairo_t* context) : context_(context), layout_(MakeLayout(context)) {
        cairo_set_line_join(context_, CAIRO_LINE_JOIN_ROUND);
    }

    void operator()(const Line& line);
    void operator()(const Area& area);
    void operator()(const Disc& disc);
    void operator()(const Label& label);
    void operator()(const Clip& clip);

private:
    void Use(const Colour& colour) { cairo_set_source_rgb(context_, colour.red, colour.green, colour.blue); }

    cairo_t* context_;
    Layout layout_;
};

void Painter::operator()(const Line& line) {
    // Cairo takes more than linear time for one long line that crosses itself.
    constexpr std::size_t kPiece = 256;
    Use(line.colour);
    cairo_set_line_width(context_, line.width);
    cairo_set_line_cap(context_, line.isDashed ? CAIRO_LINE_CAP_BUTT : CAIRO_LINE_CAP_ROUND);
    const double dash = 3.5 * line.width;
    if (line.isDashed)
        cairo_set_dash(context_, &dash, 1, 0.0);
    const std::size_t piece = line.isDashed ? std::max(line.spots.size(), kPiece) : kPiece;
    for (std::size_t start = 0; start < line.spots.size(); start += piece) {
        const std::size_t end = std::min(start + piece + 1, line.spots.size());
        cairo_move_to(context_, line.spots[start].x, line.spots[start].y);
        for (std::size_t i = start; i < end; ++i)
            cairo_line_to(context_, line.spots[i].x, line.spots[i].y);
        cairo_stroke(context_);
    }
    cairo_set_dash(context_, nullptr, 0, 0.0);
}

void Painter::operator()(const Area& area) {
    for (const Spot& spot : area.spots)
        cairo_line_to(context_, spot.x, spot.y);
    cairo_close_path(context_);
    Use(area.colour);
    if (area.edgeWidth == 0.0) {
        cairo_fill(context_);
        return;
    }
    cairo_fill_preserve(context_);
    Use(area.edge);
    cairo_set_line_width(context_, area.edgeWidth);
    cairo_stroke(context_);
}

void Painter::operator()(const Disc& disc) {
    cairo_new_sub_path(context_);
    cairo_arc(context_, disc.centre.x, disc.centre.y, disc.radius, 0.0, 2.0 * std::numbers::pi);
    cairo_close_path(context_);
    Use(disc.colour);
    cairo_fill_preserve(context_);
    Use(disc.edge);
    cairo_set_line_width(context_, disc.edgeWidth);
    cairo_stroke(context_);
}

void Painter::operator()(const Label& label) {
    SetText(layout_.get(), label.text, label.size, label.isBold);
    double width = WidthOf(layout_.get());
    if (width > label.widest) {
        pango_layout_set_width(layout_.get(), static_cast<int>(label.widest * PANGO_SCALE));
        width = label.widest;
        // Right-to-left text would be at the right end of the width.
        pango_layout_set_auto_dir(layout_.get(), TRUE);
    }
    PangoRectangle logical;
    pango_layout_get_extents(layout_.get(), nullptr, &logical);
    const double before = label.align == Align::kStart ? 0.0
                          : label.align == Align::kEnd ? width
                                                       : width / 2.0;
    const double x = label.at.x - before - static_cast<double>(logical.x) / PANGO_SCALE;
    const double y = label.at.y - static_cast<double>(logical.height) / PANGO_SCALE / 2.0;
    if (label.hasHalo) {
        cairo_move_to(context_, x, y);
        pango_cairo_layout_path(context_, layout_.get());
        Use(kPaper);
        cairo_set_line_width(context_, label.size * 0.28);
        cairo_stroke(context_);
    }
    Use(label.colour);
    cairo_move_to(context_, x, y);
    pango_cairo_show_layout(context_, layout_.get());
    cairo_new_path(context_);
}

void Painter::operator()(const Clip& clip) {
    cairo_reset_clip(context_);
    cairo_rectangle(context_, clip.box.left, clip.box.top, clip.box.Width(), clip.box.Height());
    cairo_clip(context_);
}

/// Takes the bytes that cairo writes. No exception may pass through cairo.
cairo_status_t AppendBytes(void* text, const unsigned char* bytes, unsigned size) noexcept {
    try {
        static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), size);
        return CAIRO_STATUS_SUCCESS;
    } catch (const std::exception&) {
        return CAIRO_STATUS_NO_MEMORY;
    }
}

Surface MakeSurface(const Drawing& drawing, PictureFormat format, std::string& bytes) {
    const int width = static_cast<int>(drawing.width);
    const int height = static_cast<int>(drawing.height);
    switch (format) {
    case PictureFormat::kPng:
        return Surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
    case PictureFormat::kSvg: {
        Surface surface(cairo_svg_surface_create_for_stream(AppendBytes, &bytes, width, height));
        cairo_svg_surface_set_document_unit(surface.get(), CAIRO_SVG_UNIT_PX);
        return surface;
    }
    case PictureFormat::kPdf:
        break;
    }
    Surface surface(cairo_pdf_surface_create_for_stream(AppendBytes, &bytes, width * kPointsOfPixel,
                                                        height * kPointsOfPixel));
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_TITLE, drawing.title.c_str());
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_SUBJECT, drawing.description.c_str());
    // Otherwise the time of the day would be in it.
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE, "");
    return surface;
}

std::string XmlText(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '&')
            escaped += "&amp;";
        else if (c == '<')
            escaped += "&lt;";
        else if (c == '>')
            escaped += "&gt;";
        else
            escaped += c;
    }
    return escaped;
}

/// Puts title and description into the picture for those who hear it: cairo draws letters as shapes.
void AddTitle(const Drawing& drawing, std::string& svg) {
    const std::size_t element = svg.find("<svg ");
    const std::size_t end = element == std::string::npos ? element : svg.find('>', element);
    if (end == std::string::npos)
        throw std::runtime_error("The picture could not be drawn: cairo wrote no SVG.");
    svg.insert(end + 1, "\n<title>" + XmlText(drawing.title) + "</title>\n<desc>" +
                            XmlText(drawing.description) + "</desc>");
    svg.insert(end, " role=\"img\"");
}

void PaintShapes(const Drawing& drawing, cairo_surface_t* surface, double scale) {
    const Context context(cairo_create(surface));
    Check(cairo_status(context.get()));
    cairo_scale(context.get(), scale, scale);
    cairo_set_source_rgb(context.get(), kPaper.red, kPaper.green, kPaper.blue);
    cairo_paint(context.get());
    Painter painter(context.get());
    for (const Shape& shape : drawing.shapes)
        std::visit(painter, shape);
    Check(cairo_status(context.get()));
}

} // namespace

MeasureText MakeTextMeasure() {
    // A recording surface has no size and no pixels; widths do not depend on the format without hints.
    const Surface surface(cairo_recording_surface_create(CAIRO_CONTENT_COLOR, nullptr));
    const Context context(cairo_create(surface.get()));
    const std::shared_ptr<PangoLayout> layout = MakeLayout(context.get());
    return [layout](const std::string& text, double size, bool isBold) {
        SetText(layout.get(), text, size, isBold);
        return WidthOf(layout.get());
    };
}

void PaintPicture(const Drawing& drawing, PictureFormat format,
                  const std::function<void(std::string_view)>& take) {
    std::string bytes;
    const Surface surface = MakeSurface(drawing, format, bytes);
    Check(cairo_surface_status(surface.get()));
    PaintShapes(drawing, surface.get(), format == PictureFormat::kPdf ? kPointsOfPixel : 1.0);
    if (format == PictureFormat::kPng)
        Check(cairo_surface_write_to_png_stream(surface.get(), AppendBytes, &bytes));
    cairo_surface_finish(surface.get());
    Check(cairo_surface_status(surface.get()));
    if (format == PictureFormat::kSvg)
        AddTitle(drawing, bytes);
    take(bytes);
}

} // namespace vexagpx
