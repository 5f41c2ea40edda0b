#include "render/svg_path.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <memory>

namespace host {

void SvgPath::clear() {
    *this = {};
}

void SvgPath::command(char letter) {
    // Pairs behind a move are lines.
    const char inForce = last_ == 'm' ? 'l' : last_;
    if (letter == inForce && letter != 'm') return;
    data_ += letter;
    last_ = letter;
    needsBlank_ = false;
}

void SvgPath::number(long value) {
    if (needsBlank_ && value >= 0) data_ += ' ';
    data_ += std::to_string(value);
    needsBlank_ = true;
}

void SvgPath::step(const At& to) {
    number(to.x - at_.x);
    number(to.y - at_.y);
}

void SvgPath::lineTo(const At& to) {
    if (to.y == at_.y) {
        command('h');
        number(to.x - at_.x);
    } else if (to.x == at_.x) {
        command('v');
        number(to.y - at_.y);
    } else {
        command('l');
        step(to);
    }
    at_ = to;
}

void SvgPath::add(cairo_t* cairo, double fine) {
    const std::unique_ptr<cairo_path_t, decltype(&cairo_path_destroy)> path(cairo_copy_path(cairo),
                                                                            cairo_path_destroy);
    const auto place = [&](const cairo_path_data_t& point) {
        double x = point.point.x, y = point.point.y;
        cairo_user_to_device(cairo, &x, &y);
        return At{std::lround(x * fine), std::lround(y * fine)};
    };
    for (int i = 0; i < path->num_data; i += path->data[i].header.length) {
        const cairo_path_data_t* data = path->data + i;
        switch (data->header.type) {
        case CAIRO_PATH_MOVE_TO: {
            // A move that nothing follows, as Cairo has it behind each closed contour, says nothing.
            const int next = i + data->header.length;
            if (next >= path->num_data || path->data[next].header.type == CAIRO_PATH_MOVE_TO) break;
            const At to = place(data[1]);
            command('m'); // the first one counts from the origin
            step(to);
            at_ = start_ = to;
            break;
        }
        case CAIRO_PATH_LINE_TO: lineTo(place(data[1])); break;
        case CAIRO_PATH_CURVE_TO: {
            const At to = place(data[3]);
            command('c');
            step(place(data[1]));
            step(place(data[2]));
            step(to);
            at_ = to;
            break;
        }
        case CAIRO_PATH_CLOSE_PATH:
            data_ += 'z';
            last_ = 'z';
            needsBlank_ = false;
            at_ = start_;
            break;
        }
    }
}

std::string svgColor(double r, double g, double b) {
    const auto byte = [](double part) {
        return static_cast<int>(std::lround(std::clamp(part, 0.0, 1.0) * 255));
    };
    const int parts[] = {byte(r), byte(g), byte(b)};
    const bool isShort = std::all_of(parts, parts + 3, [](int part) { return part % 17 == 0; });
    char text[8];
    if (isShort)
        std::snprintf(text, sizeof text, "#%x%x%x", parts[0] / 17, parts[1] / 17, parts[2] / 17);
    else
        std::snprintf(text, sizeof text, "#%02x%02x%02x", parts[0], parts[1], parts[2]);
    return text;
}

std::string svgNumber(double value, int digits) {
    if (!std::isfinite(value)) return "0";
    char text[40];
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::general, digits).ptr;
    return {text, end};
}

std::string svgMatrix(const cairo_matrix_t& m, double fine) {
    std::string text = "matrix(";
    for (const double part : {m.xx, m.yx, m.xy, m.yy}) text += svgNumber(part * fine) + " ";
    return text + svgNumber(std::round(m.x0 * fine), 9) + " " + svgNumber(std::round(m.y0 * fine), 9) + ")";
}

std::string xmlText(const std::string& text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '<': result += "&lt;"; break;
        case '>': result += "&gt;"; break;
        case '&': result += "&amp;"; break;
        case '"': result += "&quot;"; break;
        default:
            if (static_cast<unsigned char>(c) >= 0x20) result += c;
        }
    }
    return result;
}

} // namespace host
