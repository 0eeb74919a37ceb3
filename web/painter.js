// Paints a picture's shapes (src/ui/shapes.h, as bridge.cpp writes them) on an HTML canvas, the
// way the window's QPainter painter does: each shape filled, then stroked, inside its clip,
// moved to its pivot and turned.
'use strict';

const kPictureFont = '"DejaVu Sans", "Bitstream Vera Sans", Verdana, sans-serif';
const kCaps = ['butt', 'square', 'round'];
const kJoins = ['miter', 'bevel', 'round'];
const kAcross = ['left', 'center', 'right'];
const ShapeKind = { Rect: 0, RoundedRect: 1, Ellipse: 2, Path: 3, Text: 4 };
const FillKind = { None: 0, Solid: 1, Linear: 2, Radial: 3 };
const ClipKind = { None: 0, Rect: 1, Ellipse: 2 };
const Step = { Move: 0, Line: 1, Quad: 2, Close: 3 };

function cssColour([r, g, b, a]) {
  return `rgba(${r},${g},${b},${a})`;
}

function paintOf(ctx, fill) {
  if (fill.kind === FillKind.Solid) return cssColour(fill.colour);
  const gradient = fill.kind === FillKind.Linear
    ? ctx.createLinearGradient(fill.from[0], fill.from[1], fill.to[0], fill.to[1])
    : ctx.createRadialGradient(fill.from[0], fill.from[1], 0, fill.from[0], fill.from[1], fill.radius);
  for (const stop of fill.stops) gradient.addColorStop(stop[0], cssColour(stop[1]));
  return gradient;
}

// Edges on whole device pixels, for squares that meet without a seam.
function snapped([x, y, width, height], ratio) {
  const snap = (v) => Math.round(v * ratio) / ratio;
  return [snap(x), snap(y), snap(x + width) - snap(x), snap(y + height) - snap(y)];
}

function outline(ctx, s, ratio) {
  const [x, y, width, height] = s.crisp ? snapped(s.box, ratio) : s.box;
  ctx.beginPath();
  switch (s.kind) {
    case ShapeKind.Rect:
      ctx.rect(x, y, width, height);
      break;
    case ShapeKind.RoundedRect:
      ctx.roundRect(x, y, width, height, Math.min(s.radius, width / 2, height / 2));
      break;
    case ShapeKind.Ellipse:
      ctx.ellipse(x + width / 2, y + height / 2, width / 2, height / 2, 0, 0, 2 * Math.PI);
      break;
    case ShapeKind.Path:
      for (const part of s.path) {
        const step = part[0], to = part[1], control = part[2];
        if (step === Step.Move) ctx.moveTo(to[0], to[1]);
        else if (step === Step.Line) ctx.lineTo(to[0], to[1]);
        else if (step === Step.Quad) ctx.quadraticCurveTo(control[0], control[1], to[0], to[1]);
        else ctx.closePath();
      }
      break;
  }
}

// The text's font: its size in whole pixels, shrunk where the widest line must fit.
function setFont(ctx, t, lines) {
  const font = (px) => `${t.italic ? 'italic ' : ''}${t.bold ? 'bold ' : ''}${px}px ${kPictureFont}`;
  let px = Math.max(1, Math.round(t.size));
  ctx.font = font(px);
  if (t.fitWidth > 0) {
    const widest = Math.max(...lines.map((line) => ctx.measureText(line).width));
    if (widest > t.fitWidth) px = Math.max(1, Math.floor(t.size * t.fitWidth / widest));
    ctx.font = font(px);
  }
  if (t.spacing !== 100) {
    // Each letter's advance widened to `spacing` per cent, taken over the average letter.
    const sample = lines.join('');
    const advance = sample.length > 0 ? ctx.measureText(sample).width / sample.length : 0;
    ctx.letterSpacing = `${advance * (t.spacing - 100) / 100}px`;
  }
}

function paintText(ctx, s) {
  const t = s.text;
  const lines = t.string.split('\n');
  setFont(ctx, t, lines);
  const metrics = ctx.measureText('Hg');
  const ascent = metrics.fontBoundingBoxAscent;
  const lineHeight = ascent + metrics.fontBoundingBoxDescent;
  const [x, y, width, height] = s.box;
  const block = lineHeight * lines.length;
  const top = [y, y + (height - block) / 2, y + height - block][t.v];
  ctx.textAlign = kAcross[t.h];
  ctx.textBaseline = 'alphabetic';
  ctx.fillStyle = cssColour(s.fill.colour);
  const across = [x, x + width / 2, x + width][t.h];
  lines.forEach((line, i) => ctx.fillText(line, across, top + i * lineHeight + ascent));
}

function paintShape(ctx, s, ratio) {
  ctx.save();
  ctx.translate(s.pivot[0], s.pivot[1]);
  ctx.rotate(s.degrees * Math.PI / 180);
  if (s.clip !== ClipKind.None) {
    const [x, y, width, height] = s.clipBox;
    ctx.beginPath();
    if (s.clip === ClipKind.Rect) ctx.rect(x, y, width, height);
    else ctx.ellipse(x + width / 2, y + height / 2, width / 2, height / 2, 0, 0, 2 * Math.PI);
    ctx.clip();
  }
  if (s.kind === ShapeKind.Text) {
    paintText(ctx, s);
  } else {
    outline(ctx, s, ratio);
    if (s.fill.kind !== FillKind.None) {
      ctx.fillStyle = paintOf(ctx, s.fill);
      ctx.fill('evenodd');
    }
    if (s.stroke.width > 0) {
      ctx.lineWidth = s.stroke.width;
      ctx.strokeStyle = cssColour(s.stroke.colour);
      ctx.lineCap = kCaps[s.stroke.cap];
      ctx.lineJoin = kJoins[s.stroke.join];
      ctx.miterLimit = 2;
      ctx.stroke();
    }
  }
  ctx.restore();
}

// Paints `drawing` (its coordinates CSS pixels) on a canvas of `ratio` device pixels to one.
function paintPicture(canvas, drawing, ratio) {
  const ctx = canvas.getContext('2d');
  ctx.setTransform(1, 0, 0, 1, 0, 0);
  ctx.clearRect(0, 0, canvas.width, canvas.height);
  ctx.setTransform(ratio, 0, 0, ratio, 0, 0);
  ctx.globalAlpha = drawing.opacity;
  for (const s of drawing.shapes) paintShape(ctx, s, ratio);
}
