#include "drum_grid.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <set>
#include <sstream>

#include "gm_drum_names.h"

namespace rw::tools {
namespace {

constexpr double kMargin = 16;
constexpr double kLabelWidth = 176;
constexpr double kRowHeight = 20;
constexpr double kRulerHeight = 30;  // measure numbers and markers above a system
constexpr double kSystemGap = 18;
constexpr double kTitleHeight = 52;
constexpr double kLegendHeight = 40;
constexpr double kLegendWidth = 620;
constexpr double kQuarterWidth = 48;
constexpr double kLongestLine = 900;
constexpr double kHitRadius = 6;
constexpr const char* kInk = "#1f3a68";
constexpr const char* kPlayedInk = "#c0504d";

std::string Escaped(const std::string& text) {
  std::string out;
  for (char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

std::string Number(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f", value);
  return text;
}

double Opacity(int velocity) {
  return velocity <= 0 ? 1.0 : 0.15 + 0.85 * std::clamp(velocity, 1, 127) / 127.0;
}

bool InSlashRange(const DrumGrid& grid, int32_t measure) {
  return std::any_of(grid.slashMeasures.begin(), grid.slashMeasures.end(), [&](const auto& range) {
    return measure >= range.first && measure <= range.second;
  });
}

class Picture {
 public:
  explicit Picture(const DrumGrid& grid) : grid_(grid) {
    measures_ = std::clamp(grid.measures, 1, kMostMeasuresDrawn);
    const uint64_t drawnEnd = uint64_t(measures_) * grid.unitsPerMeasure;
    for (const GridHit& hit : grid.hits) {
      if (hit.position < drawnEnd) hits_.push_back(hit);
    }
    std::sort(hits_.begin(), hits_.end(),
              [](const GridHit& a, const GridHit& b) { return a.position < b.position; });
    for (const GridHit& hit : hits_) keys_.insert(hit.key);
    slashRow_ = !grid.slashMeasures.empty();
    rows_ = static_cast<int>(keys_.size()) + (slashRow_ ? 1 : 0);
    double perQuarter = kQuarterWidth;
    const double quarters = double(grid.unitsPerMeasure) / double(grid.unitsPerQuarter);
    if (quarters * perQuarter > kLongestLine) perQuarter = kLongestLine / quarters;
    unitWidth_ = perQuarter / double(grid.unitsPerQuarter);
    measureWidth_ = double(grid.unitsPerMeasure) * unitWidth_;
    perLine_ = std::clamp(static_cast<int>(kLongestLine / measureWidth_), 1, measures_);
    lines_ = (measures_ + perLine_ - 1) / perLine_;
    systemHeight_ = kRulerHeight + rows_ * kRowHeight + kSystemGap;
  }

  std::string Draw() {
    // Wide enough for the titles and the legend too, at about the width of
    // an average character of their fonts.
    const double texts = std::max({17 * 0.62 * double(grid_.title.size()),
                                   12 * 0.58 * double(grid_.subtitle.size()), kLegendWidth});
    const double width =
        std::max(2 * kMargin + kLabelWidth + perLine_ * measureWidth_, 2 * kMargin + texts);
    const double height = kMargin + kTitleHeight + lines_ * systemHeight_ + kLegendHeight;
    out_ << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << Number(width) << "\" height=\""
         << Number(height) << "\" viewBox=\"0 0 " << Number(width) << " " << Number(height)
         << "\" font-family=\"DejaVu Sans, Arial, sans-serif\">\n"
         << "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
    Text(kMargin, kMargin + 16, grid_.title, "font-size=\"17\" font-weight=\"bold\"");
    Text(kMargin, kMargin + 36, grid_.subtitle, "font-size=\"12\" fill=\"#444\"");
    for (int line = 0; line < lines_; ++line) System(line);
    Legend(height - kLegendHeight + 14);
    out_ << "</svg>\n";
    return out_.str();
  }

 private:
  double SystemTop(int line) const { return kMargin + kTitleHeight + line * systemHeight_; }
  double RowTop(int line, int row) const {
    return SystemTop(line) + kRulerHeight + row * kRowHeight;
  }
  double MeasureLeft(int column) const { return kMargin + kLabelWidth + column * measureWidth_; }

  void Text(double x, double y, const std::string& text, const std::string& attributes) {
    out_ << "<text x=\"" << Number(x) << "\" y=\"" << Number(y) << "\" " << attributes << ">"
         << Escaped(text) << "</text>\n";
  }
  void Line(double x1, double y1, double x2, double y2, const char* colour, double width) {
    out_ << "<line x1=\"" << Number(x1) << "\" y1=\"" << Number(y1) << "\" x2=\"" << Number(x2)
         << "\" y2=\"" << Number(y2) << "\" stroke=\"" << colour << "\" stroke-width=\""
         << Number(width) << "\"/>\n";
  }

  void System(int line) {
    const int first = line * perLine_;
    const int count = std::min(perLine_, measures_ - first);
    const double top = RowTop(line, 0);
    const double bottom = RowTop(line, rows_);
    const double right = MeasureLeft(count);
    // Rows, shaded alternately, with their instruments.
    int row = 0;
    for (auto key = keys_.rbegin(); key != keys_.rend(); ++key, ++row) {
      Band(line, row, right);
      Text(kMargin, RowTop(line, row) + 14, std::to_string(*key) + "  " + groove::DrumKeyName(*key),
           "font-size=\"12\"");
    }
    if (slashRow_) {
      Band(line, row, right);
      Text(kMargin, RowTop(line, row) + 14, "beat slashes",
           "font-size=\"12\" font-style=\"italic\"");
    }
    for (int m = 0; m < count; ++m) Measure(line, first + m, m, top, bottom);
    Line(right, top, right, bottom, "#222", 1.6);
  }

  void Band(int line, int row, double right) {
    if (row % 2 == 0) {
      out_ << "<rect x=\"" << Number(MeasureLeft(0)) << "\" y=\"" << Number(RowTop(line, row))
           << "\" width=\"" << Number(right - MeasureLeft(0)) << "\" height=\""
           << Number(kRowHeight) << "\" fill=\"#f3f5f8\"/>\n";
    }
  }

  void Measure(int line, int index, int column, double top, double bottom) {
    const double left = MeasureLeft(column);
    const int32_t number = grid_.firstMeasure + index;
    const bool placed = grid_.placedMeasures <= 0 || index < grid_.placedMeasures;
    if (!placed) {
      out_ << "<rect x=\"" << Number(left) << "\" y=\"" << Number(top) << "\" width=\""
           << Number(measureWidth_) << "\" height=\"" << Number(bottom - top)
           << "\" fill=\"#dddddd\" fill-opacity=\"0.6\"/>\n";
    }
    // Sixteenths where they are wide enough to see, then beats, then the bar.
    const uint64_t sixteenth = grid_.unitsPerQuarter / 4;
    if (sixteenth > 0 && double(sixteenth) * unitWidth_ >= 6) {
      for (uint64_t u = sixteenth; u < grid_.unitsPerMeasure; u += sixteenth) {
        const double x = left + double(u) * unitWidth_;
        Line(x, top, x, bottom, "#e4e4e4", 0.6);
      }
    }
    if (grid_.unitsPerBeat > 0) {
      for (uint64_t u = grid_.unitsPerBeat; u < grid_.unitsPerMeasure; u += grid_.unitsPerBeat) {
        const double x = left + double(u) * unitWidth_;
        const bool group = grid_.unitsPerGroup > 0 && u % grid_.unitsPerGroup == 0;
        Line(x, top, x, bottom, group ? "#707070" : "#a8a8a8", group ? 1.1 : 0.9);
      }
    }
    Line(left, top, left, bottom, "#222", column == 0 ? 1.6 : 1.2);
    std::string label = std::to_string(number) + (placed ? "" : "  not placed");
    for (const auto& [measure, text] : grid_.markers) {
      if (measure == number) label += "   " + text;
    }
    Text(left + 3, top - 8, label, "font-size=\"11\" fill=\"#333\"");
    if (slashRow_ && InSlashRange(grid_, number)) Slashes(line, left);
    Hits(line, index, left);
  }

  void Slashes(int line, double left) {
    const double y = RowTop(line, rows_ - 1);
    for (uint64_t u = 0; grid_.unitsPerBeat > 0 && u < grid_.unitsPerMeasure;
         u += grid_.unitsPerBeat) {
      const double x = left + double(u) * unitWidth_ + 4;
      Line(x, y + kRowHeight - 4, x + 8, y + 4, "#222", 2.2);
    }
  }

  void Hits(int line, int index, double left) {
    const uint64_t start = uint64_t(index) * grid_.unitsPerMeasure;
    const uint64_t end = start + grid_.unitsPerMeasure;
    const auto from = std::lower_bound(hits_.begin(), hits_.end(), start,
                                       [](const GridHit& h, uint64_t p) { return h.position < p; });
    // Where strokes were played goes over where they are written, so that a
    // ring shows even where the two meet.
    std::vector<GridHit> measure(from, std::find_if(from, hits_.end(), [end](const GridHit& h) {
                                   return h.position >= end;
                                 }));
    std::stable_partition(measure.begin(), measure.end(),
                          [](const GridHit& h) { return !h.faint; });
    for (auto hit = measure.begin(); hit != measure.end(); ++hit) {
      const int row = static_cast<int>(std::distance(keys_.upper_bound(hit->key), keys_.end()));
      const double x = left + double(hit->position - start) * unitWidth_;
      const double y = RowTop(line, row) + kRowHeight / 2;
      if (hit->faint) {
        out_ << "<circle cx=\"" << Number(x) << "\" cy=\"" << Number(y) << "\" r=\""
             << Number(kHitRadius - 1) << "\" fill=\"none\" stroke=\"" << kPlayedInk
             << "\" stroke-width=\"1.2\" stroke-opacity=\"0.7\"/>\n";
        continue;
      }
      out_ << "<circle cx=\"" << Number(x) << "\" cy=\"" << Number(y) << "\" r=\""
           << Number(kHitRadius) << "\" fill=\"" << kInk << "\" fill-opacity=\""
           << Number(Opacity(hit->velocity)) << "\" stroke=\"" << kInk << "\"/>\n";
    }
  }

  void Legend(double y) {
    const bool velocities =
        std::any_of(hits_.begin(), hits_.end(), [](const GridHit& h) { return h.velocity > 0; });
    if (!velocities) {
      Text(kMargin, y + 4, "Each dot is a note at its exact position; a staff keeps no velocity.",
           "font-size=\"11\" fill=\"#444\"");
      return;
    }
    Text(kMargin, y + 4, "velocity", "font-size=\"11\" fill=\"#444\"");
    double x = kMargin + 64;
    for (int velocity : {16, 48, 80, 112, 127}) {
      out_ << "<circle cx=\"" << Number(x) << "\" cy=\"" << Number(y) << "\" r=\""
           << Number(kHitRadius) << "\" fill=\"" << kInk << "\" fill-opacity=\""
           << Number(Opacity(velocity)) << "\" stroke=\"" << kInk << "\"/>\n";
      Text(x + 10, y + 4, std::to_string(velocity), "font-size=\"11\" fill=\"#444\"");
      x += 52;
    }
    Text(x + 8, y + 4, "each dot at its exact tick", "font-size=\"11\" fill=\"#444\"");
    if (std::any_of(hits_.begin(), hits_.end(), [](const GridHit& h) { return h.faint; })) {
      x += 170;
      out_ << "<circle cx=\"" << Number(x) << "\" cy=\"" << Number(y) << "\" r=\""
           << Number(kHitRadius - 1) << "\" fill=\"none\" stroke=\"" << kPlayedInk
           << "\" stroke-width=\"1.2\" stroke-opacity=\"0.7\"/>\n";
      Text(x + 10, y + 4, "where it was played", "font-size=\"11\" fill=\"#444\"");
    }
  }

  const DrumGrid& grid_;
  std::vector<GridHit> hits_;  // those drawn, in order of position
  std::set<int> keys_;
  bool slashRow_ = false;
  int rows_ = 0;
  int measures_ = 0;
  double unitWidth_ = 0;
  double measureWidth_ = 0;
  int perLine_ = 1;
  int lines_ = 1;
  double systemHeight_ = 0;
  std::ostringstream out_;
};

}  // namespace

std::string DrumGridSvg(const DrumGrid& grid) {
  if (grid.unitsPerQuarter == 0 || grid.unitsPerMeasure == 0) return {};
  return Picture(grid).Draw();
}

}  // namespace rw::tools
