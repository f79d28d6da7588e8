#include "ShaderSources.h"

namespace render::shaders {

const char* const kSurfaceVertex = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec2 texCoord;
uniform mat4 modelView;
uniform mat4 projection;
uniform float heightOffset;
uniform float heightScale;
out vec3 viewPosition;
out vec2 uv;
out float height;
void main() {
    vec4 p = modelView * vec4(position, 1.0);
    viewPosition = p.xyz;
    uv = texCoord;
    height = (position.y + heightOffset) * heightScale;
    gl_Position = projection * p;
}
)";

const char* const kTexturedFragment = R"(#version 330 core
in vec2 uv;
uniform sampler2D image;
out vec4 fragColour;
void main() { fragColour = vec4(texture(image, vec2(uv.x, 1.0 - uv.y)).rgb, 1.0); }
)";

// Flat shading from the screen derivatives needs no normals on the card;
// the normal always faces the viewer, so both sides of a face are lit.
const char* const kShadedFragment = R"(#version 330 core
in vec3 viewPosition;
in float height;
uniform bool byHeight;
uniform vec3 colour;
uniform vec3 lowColour;
uniform vec3 highColour;
uniform vec3 sunDirection;
out vec4 fragColour;
void main() {
    vec3 n = normalize(cross(dFdx(viewPosition), dFdy(viewPosition)));
    vec3 toEye = normalize(-viewPosition);
    float light = 0.3 + 0.35 * max(dot(n, sunDirection), 0.0) + 0.35 * abs(dot(n, toEye));
    vec3 base = byHeight ? mix(lowColour, highColour, clamp(height, 0.0, 1.0)) : colour;
    fragColour = vec4(base * light, 1.0);
}
)";

const char* const kPictureFragment = R"(#version 330 core
in vec2 uv;
uniform sampler2D image;
uniform vec3 colour;
uniform bool replaceColour;
out vec4 fragColour;
void main() {
    vec4 texel = texture(image, uv);
    if (texel.a < 0.02) discard;
    fragColour = vec4(replaceColour ? texel.rgb : texel.rgb * colour, texel.a);
}
)";

const char* const kLineVertex = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec3 colour;
layout(location = 2) in float size;
uniform mat4 modelView;
uniform mat4 projection;
uniform float pullToEye;
out vec3 lineColour;
out float lineWidth;
void main() {
    lineColour = colour;
    lineWidth = size;
    vec4 v = modelView * vec4(position, 1.0);
    gl_Position = projection * vec4(v.xyz * (1.0 - pullToEye), 1.0);
}
)";

// Segments are cut at the near plane before the division by w, so a line
// that passes behind the eye still ends on the screen where it should.
const char* const kLineGeometry = R"(#version 330 core
layout(lines) in;
layout(triangle_strip, max_vertices = 4) out;
in vec3 lineColour[];
in float lineWidth[];
uniform vec2 viewport;
uniform float pixelScale;
out vec3 fragmentColour;
void emitCorner(vec4 p, vec2 offset) {
    gl_Position = vec4(p.xy + offset * p.w, p.z, p.w);
    fragmentColour = lineColour[0];
    EmitVertex();
}
void main() {
    vec4 a = gl_in[0].gl_Position;
    vec4 b = gl_in[1].gl_Position;
    float da = a.z + a.w;
    float db = b.z + b.w;
    if (da < 0.0 && db < 0.0) return;
    if (da < 0.0) a = mix(a, b, da / (da - db));
    else if (db < 0.0) b = mix(b, a, db / (db - da));
    vec2 halfViewport = viewport * 0.5;
    vec2 d = (b.xy / b.w - a.xy / a.w) * halfViewport;
    float len = length(d);
    vec2 direction = len > 1e-6 ? d / len : vec2(1.0, 0.0);
    vec2 offset = vec2(-direction.y, direction.x) * max(lineWidth[0] * pixelScale, 1.0) * 0.5 / halfViewport;
    emitCorner(a, offset);
    emitCorner(a, -offset);
    emitCorner(b, offset);
    emitCorner(b, -offset);
    EndPrimitive();
}
)";

const char* const kLineFragment = R"(#version 330 core
in vec3 fragmentColour;
out vec4 fragColour;
void main() { fragColour = vec4(fragmentColour, 1.0); }
)";

const char* const kPointVertex = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec3 colour;
layout(location = 2) in float size;
uniform mat4 modelView;
uniform mat4 projection;
uniform float pixelScale;
uniform float pullToEye;
out vec3 pointColour;
void main() {
    pointColour = colour;
    vec4 v = modelView * vec4(position, 1.0);
    gl_Position = projection * vec4(v.xyz * (1.0 - pullToEye), 1.0);
    gl_PointSize = max(size * pixelScale, 1.0);
}
)";

const char* const kPointFragment = R"(#version 330 core
in vec3 pointColour;
out vec4 fragColour;
void main() {
    vec2 c = gl_PointCoord * 2.0 - 1.0;
    if (dot(c, c) > 1.0) discard;
    fragColour = vec4(pointColour, 1.0);
}
)";

}  // namespace render::shaders
