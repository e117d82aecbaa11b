#include "shell/view/combo_field.h"

namespace quilmark {

namespace {

// Pixels at 96 dpi.
constexpr int kFieldInset = 12, kFieldRight = 24, kRowInset = 8, kRowRight = 6, kRadius = 8;
constexpr int kArrowHalf = 4, kArrowRight = 14;

void PaintArrow(Canvas& canvas, const ViewContext& context, const Rect& field) {
  const int half = context.Scaled(kArrowHalf), middle = field.right - context.Scaled(kArrowRight);
  const int top = field.top + (Height(field) - half) / 2;
  const Point triangle[] = {{middle - half, top}, {middle + half, top}, {middle, top + half}};
  canvas.FillPolygon(triangle, context.palette.text);
}

}  // namespace

void PaintComboField(Canvas& canvas, const ViewContext& context, const Rect& field,
                     std::u16string_view text, bool hasFocus) {
  const Palette& palette = context.palette;
  canvas.Fill(field, palette.toolbar);
  // Within the outline, whose corners it must not fill.
  canvas.FillRound({field.left, field.top, field.right - 1, field.bottom - 1}, context.Scaled(kRadius),
                   palette.editWell);
  canvas.OutlineRound(field, context.Scaled(kRadius), hasFocus ? palette.focusRing : palette.border);
  PaintArrow(canvas, context, field);
  canvas.Text({field.left + context.Scaled(kFieldInset), field.top,
               field.right - context.Scaled(kFieldRight), field.bottom},
              text, {.font = FontRole::kMain, .color = palette.text});
}

void PaintComboRow(Canvas& canvas, const ViewContext& context, const Rect& row, std::u16string_view text,
                   ComboRow kind) {
  const Palette& palette = context.palette;
  const bool isSelected = kind == ComboRow::kSelected;
  canvas.Fill(row, isSelected ? palette.rowSel : palette.editWell);
  const int inset = kind == ComboRow::kField ? kFieldInset : kRowInset;
  canvas.Text(
      {row.left + context.Scaled(inset), row.top, row.right - context.Scaled(kRowRight), row.bottom},
      text, {.font = FontRole::kMain, .color = isSelected ? palette.rowSelText : palette.text});
}

}  // namespace quilmark
