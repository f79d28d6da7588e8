#include "SceneRenderer.h"

#include <QImage>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "BillboardGeometry.h"
#include "LayerVertices.h"
#include "MipLevels.h"
#include "RenderModes.h"
#include "ShaderSources.h"

namespace render {

namespace {

constexpr float kBackground[3] = {0.60f, 0.70f, 0.80f};
// From the south-west and high, in the engine frame: walls facing it read lighter than the others.
constexpr double kSunDirection[3] = {-0.35, -0.55, 0.76};
constexpr float kStrokePull = 0.002f;       // fraction of the distance to the eye
constexpr float kLayerLinePull = 0.001f;
constexpr float kLayerLineWidth = 1.5f;
constexpr int kSphereSlices = 24;
constexpr int kSphereStacks = 12;
constexpr int kStrokeFloats = 7;
constexpr int kQuadFloats = 5;

std::unique_ptr<QOpenGLShaderProgram> buildProgram(const char* vertex, const char* geometry, const char* fragment) {
    auto program = std::make_unique<QOpenGLShaderProgram>();
    bool ok = program->addShaderFromSourceCode(QOpenGLShader::Vertex, vertex);
    if (ok && geometry) ok = program->addShaderFromSourceCode(QOpenGLShader::Geometry, geometry);
    ok = ok && program->addShaderFromSourceCode(QOpenGLShader::Fragment, fragment) && program->link();
    if (!ok) {
        engine::engineLog("renderer: shader program failed: %s", program->log().toLocal8Bit().constData());
        return nullptr;
    }
    return program;
}

std::string layerKey(const std::string& name, int occurrence) {
    return name + '\x1f' + std::to_string(occurrence);
}

// One stroke as floats next to the eye: position (drawing frame), colour, size.
void appendStrokeVertex(const double point[3], const Stroke& stroke, const double eye[3], std::vector<float>& out) {
    const double shifted[3] = {point[0] - eye[0], point[1] - eye[1], point[2] - eye[2]};
    double drawn[3];
    toDrawing(shifted, drawn);
    out.insert(out.end(), {float(drawn[0]), float(drawn[1]), float(drawn[2]), stroke.rgb[0], stroke.rgb[1],
                           stroke.rgb[2], stroke.size});
}

void growBox(double minMax[6], const double point[3], bool& any) {
    for (int i = 0; i < 3; ++i) {
        minMax[2 * i] = any ? std::min(minMax[2 * i], point[i]) : point[i];
        minMax[2 * i + 1] = any ? std::max(minMax[2 * i + 1], point[i]) : point[i];
    }
    any = true;
}

// Billboard pixels as RGBA rows from the top: 4 bytes a pixel with alpha,
// otherwise 3 in rows padded to 4 bytes, made opaque.
std::vector<std::uint8_t> pictureRgba(const engine::BillboardItem& item) {
    const BILLBOARD_DATA& data = item.data;
    const std::size_t width = std::size_t(data.imageWidth), height = std::size_t(data.imageHeight);
    const std::size_t rowBytes = std::size_t(BillboardRowBytes(data.imageWidth, data.alphaFlag));
    if (item.image.size() < rowBytes * height) return {};
    std::vector<std::uint8_t> rgba(width * height * 4);
    for (std::size_t y = 0; y < height; ++y)
        for (std::size_t x = 0; x < width; ++x) {
            const std::uint8_t* in = item.image.data() + y * rowBytes + x * (data.alphaFlag ? 4 : 3);
            std::uint8_t* out = rgba.data() + (y * width + x) * 4;
            out[0] = in[0];
            out[1] = in[1];
            out[2] = in[2];
            out[3] = data.alphaFlag ? in[3] : 255;
        }
    return rgba;
}

}  // namespace

SceneRenderer::SceneRenderer(bool takesUpdateMarks) : takesUpdateMarks_(takesUpdateMarks) {}

SceneRenderer::~SceneRenderer() = default;

bool SceneRenderer::initialize() {
    if (ready_) return true;
    if (!initializeOpenGLFunctions()) {
        engine::engineLog("renderer: OpenGL 3.3 core functions are not available");
        return false;
    }
    textured_ = buildProgram(shaders::kSurfaceVertex, nullptr, shaders::kTexturedFragment);
    shaded_ = buildProgram(shaders::kSurfaceVertex, nullptr, shaders::kShadedFragment);
    picture_ = buildProgram(shaders::kSurfaceVertex, nullptr, shaders::kPictureFragment);
    lines_ = buildProgram(shaders::kLineVertex, shaders::kLineGeometry, shaders::kLineFragment);
    points_ = buildProgram(shaders::kPointVertex, nullptr, shaders::kPointFragment);
    if (!textured_ || !shaded_ || !picture_ || !lines_ || !points_) return false;
    GLint maxSize = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &maxSize);
    maxTextureSize_ = std::max(64, int(maxSize));

    glGenVertexArrays(1, &dynamicVao_);
    glGenBuffers(1, &dynamicVbo_);
    glBindVertexArray(dynamicVao_);
    glBindBuffer(GL_ARRAY_BUFFER, dynamicVbo_);
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, kStrokeFloats * sizeof(float), nullptr);
    glEnableVertexAttribArray(1);
    glVertexAttribPointer(1, 3, GL_FLOAT, GL_FALSE, kStrokeFloats * sizeof(float),
                          reinterpret_cast<void*>(3 * sizeof(float)));
    glEnableVertexAttribArray(2);
    glVertexAttribPointer(2, 1, GL_FLOAT, GL_FALSE, kStrokeFloats * sizeof(float),
                          reinterpret_cast<void*>(6 * sizeof(float)));

    glGenVertexArrays(1, &quadVao_);
    glGenBuffers(1, &quadVbo_);
    glBindVertexArray(quadVao_);
    glBindBuffer(GL_ARRAY_BUFFER, quadVbo_);
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, kQuadFloats * sizeof(float), nullptr);
    glEnableVertexAttribArray(1);
    glVertexAttribPointer(1, 2, GL_FLOAT, GL_FALSE, kQuadFloats * sizeof(float),
                          reinterpret_cast<void*>(3 * sizeof(float)));
    glBindVertexArray(0);
    createSphereMesh();
    ready_ = true;
    return true;
}

void SceneRenderer::createSphereMesh() {
    std::vector<float> vertices;
    std::vector<std::uint32_t> indices;
    const double pi = 3.14159265358979323846;
    for (int stack = 0; stack <= kSphereStacks; ++stack) {
        const double polar = pi * stack / kSphereStacks;
        for (int slice = 0; slice <= kSphereSlices; ++slice) {
            const double azimuth = 2 * pi * slice / kSphereSlices;
            vertices.push_back(float(std::sin(polar) * std::cos(azimuth)));
            vertices.push_back(float(std::cos(polar)));
            vertices.push_back(float(std::sin(polar) * std::sin(azimuth)));
        }
    }
    for (int stack = 0; stack < kSphereStacks; ++stack)
        for (int slice = 0; slice < kSphereSlices; ++slice) {
            const std::uint32_t a = std::uint32_t(stack * (kSphereSlices + 1) + slice);
            const std::uint32_t b = a + kSphereSlices + 1;
            indices.insert(indices.end(), {a, b, a + 1, a + 1, b, b + 1});
        }
    sphereIndexCount_ = int(indices.size());
    glGenVertexArrays(1, &sphereVao_);
    glGenBuffers(1, &sphereVbo_);
    glGenBuffers(1, &sphereIbo_);
    glBindVertexArray(sphereVao_);
    glBindBuffer(GL_ARRAY_BUFFER, sphereVbo_);
    glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(vertices.size() * sizeof(float)), vertices.data(), GL_STATIC_DRAW);
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, 3 * sizeof(float), nullptr);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, sphereIbo_);
    glBufferData(GL_ELEMENT_ARRAY_BUFFER, GLsizeiptr(indices.size() * sizeof(std::uint32_t)), indices.data(),
                 GL_STATIC_DRAW);
    glBindVertexArray(0);
}

void SceneRenderer::releaseLayer(GpuLayer& gpu) {
    const unsigned arrays[2] = {gpu.vao, gpu.lineVao};
    const unsigned buffers[4] = {gpu.vbo, gpu.ibo, gpu.lineVbo, gpu.lineIbo};
    glDeleteVertexArrays(2, arrays);
    glDeleteBuffers(4, buffers);
    gpu = GpuLayer{};
}

void SceneRenderer::release() {
    if (!ready_) return;
    for (auto& entry : layers_) releaseLayer(entry.second);
    layers_.clear();
    for (auto& entry : textures_) glDeleteTextures(1, &entry.second.id);
    textures_.clear();
    for (GpuPicture& picture : pictures_) glDeleteTextures(1, &picture.id);
    pictures_.clear();
    const unsigned arrays[3] = {sphereVao_, dynamicVao_, quadVao_};
    const unsigned buffers[4] = {sphereVbo_, sphereIbo_, dynamicVbo_, quadVbo_};
    glDeleteVertexArrays(3, arrays);
    glDeleteBuffers(4, buffers);
    sphereVao_ = sphereVbo_ = sphereIbo_ = dynamicVao_ = dynamicVbo_ = quadVao_ = quadVbo_ = 0;
    textured_.reset();
    shaded_.reset();
    picture_.reset();
    lines_.reset();
    points_.reset();
    ready_ = false;
}

void SceneRenderer::uploadLayer(const engine::Layer& layer, GpuLayer& gpu) {
    const LayerVertices data = buildLayerVertices(layer);
    std::memcpy(gpu.origin, data.origin, sizeof gpu.origin);
    std::memcpy(gpu.minMax, data.minMax, sizeof gpu.minMax);
    gpu.hasBounds = data.hasBounds;
    gpu.textured = data.textured;
    gpu.refreshed = true;
    if (!data.trianglesValid || !data.linesValid)
        engine::engineLog("renderer: layer %s has indices past its vertices; those parts are not drawn",
                          layer.name.c_str());

    gpu.indexCount = data.trianglesValid ? int(layer.triangles.size()) : 0;
    if (!gpu.vao) {
        glGenVertexArrays(1, &gpu.vao);
        glGenBuffers(1, &gpu.vbo);
        glGenBuffers(1, &gpu.ibo);
    }
    glBindVertexArray(gpu.vao);
    glBindBuffer(GL_ARRAY_BUFFER, gpu.vbo);
    glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(data.vertices.size() * sizeof(float)), data.vertices.data(),
                 GL_STATIC_DRAW);
    const GLsizei stride = GLsizei(data.floatsPerVertex * sizeof(float));
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, stride, nullptr);
    if (data.textured) {
        glEnableVertexAttribArray(1);
        glVertexAttribPointer(1, 2, GL_FLOAT, GL_FALSE, stride, reinterpret_cast<void*>(3 * sizeof(float)));
    } else {
        glDisableVertexAttribArray(1);
    }
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, gpu.ibo);
    glBufferData(GL_ELEMENT_ARRAY_BUFFER, GLsizeiptr(gpu.indexCount * sizeof(std::uint32_t)),
                 gpu.indexCount ? layer.triangles.data() : nullptr, GL_STATIC_DRAW);

    gpu.lineIndexCount = data.linesValid ? int(layer.lineSegments.size()) : 0;
    if (gpu.lineIndexCount > 0) {
        if (!gpu.lineVao) {
            glGenVertexArrays(1, &gpu.lineVao);
            glGenBuffers(1, &gpu.lineVbo);
            glGenBuffers(1, &gpu.lineIbo);
        }
        glBindVertexArray(gpu.lineVao);
        glBindBuffer(GL_ARRAY_BUFFER, gpu.lineVbo);
        glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(data.lineVertices.size() * sizeof(float)),
                     data.lineVertices.data(), GL_STATIC_DRAW);
        glEnableVertexAttribArray(0);
        glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, 3 * sizeof(float), nullptr);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, gpu.lineIbo);
        glBufferData(GL_ELEMENT_ARRAY_BUFFER, GLsizeiptr(gpu.lineIndexCount * sizeof(std::uint32_t)),
                     layer.lineSegments.data(), GL_STATIC_DRAW);
    }
    glBindVertexArray(0);
}

// Layers are known by name and by the rank among layers of that name, so a
// deleted layer never leaves its buffers to the one that takes its place.
void SceneRenderer::syncLayers(engine::EngineState& state, std::vector<GpuLayer*>& drawList) {
    for (auto& entry : layers_) entry.second.seen = false;
    std::unordered_map<std::string, int> occurrences;
    drawList.clear();
    for (engine::Layer& layer : state.layers) {
        GpuLayer& gpu = layers_[layerKey(layer.name, occurrences[layer.name]++)];
        gpu.seen = true;
        gpu.refreshed = false;
        if (!gpu.vao || layer.gpuUpdate) {
            uploadLayer(layer, gpu);
            if (takesUpdateMarks_) layer.gpuUpdate = false;
        }
        drawList.push_back(&gpu);
    }
    for (auto it = layers_.begin(); it != layers_.end();) {
        if (it->second.seen) {
            ++it;
        } else {
            releaseLayer(it->second);
            it = layers_.erase(it);
        }
    }
    // The pointers stay valid: erasing from an unordered_map moves no other element.
}

unsigned SceneRenderer::textureFor(const std::string& path, int maxExponent, bool refresh) {
    auto it = textures_.find(path);
    if (it != textures_.end() && !refresh) {
        it->second.used = true;
        return it->second.id;
    }
    const std::shared_ptr<const engine::TextureImage> image = engine::loadTextureCached(path, maxExponent);
    if (it != textures_.end() && image && image.get() == it->second.source && !it->second.watch.expired()) {
        it->second.used = true;
        return it->second.id;
    }
    GpuTexture& texture = textures_[path];
    texture.used = true;
    texture.source = image.get();
    texture.watch = image;
    if (!image) {
        if (texture.id) glDeleteTextures(1, &texture.id);
        texture.id = 0;
        return 0;
    }
    if (!texture.id) glGenTextures(1, &texture.id);
    glBindTexture(GL_TEXTURE_2D, texture.id);
    if (std::max(image->width, image->height) > maxTextureSize_) {
        // The engine's limit is above the device's: a reduced copy for the card only.
        const QImage full(image->rgba.data(), image->width, image->height, image->width * 4, QImage::Format_RGBA8888);
        const QImage reduced =
            full.scaled(maxTextureSize_, maxTextureSize_, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                .convertToFormat(QImage::Format_RGBA8888);
        uploadMipmapped(reduced.constBits(), reduced.width(), reduced.height());
    } else {
        uploadMipmapped(image->rgba.data(), image->width, image->height);
    }
    // One level a pixel: half the texture reads of blending two levels, which a software rasteriser feels.
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    return texture.id;
}

void SceneRenderer::uploadMipmapped(const std::uint8_t* rgba, int width, int height) {
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, rgba);
    RgbaLevel level;
    int index = 0;
    while (width > 1 || height > 1) {
        level = halveRgba(index == 0 ? rgba : level.rgba.data(), width, height);
        width = level.width;
        height = level.height;
        glTexImage2D(GL_TEXTURE_2D, ++index, GL_RGBA8, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, level.rgba.data());
    }
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, index);
}

unsigned SceneRenderer::pictureFor(std::size_t index, const engine::BillboardItem& item) {
    if (pictures_.size() <= index) pictures_.resize(index + 1);
    GpuPicture& picture = pictures_[index];
    const BILLBOARD_DATA& data = item.data;
    if (picture.id && picture.width == data.imageWidth && picture.height == data.imageHeight &&
        picture.alpha == data.alphaFlag && picture.bytes == item.image)
        return picture.id;
    const std::vector<std::uint8_t> rgba = pictureRgba(item);
    if (rgba.empty()) return 0;
    if (!picture.id) glGenTextures(1, &picture.id);
    picture.width = data.imageWidth;
    picture.height = data.imageHeight;
    picture.alpha = data.alphaFlag;
    picture.bytes = item.image;
    glBindTexture(GL_TEXTURE_2D, picture.id);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, picture.width, picture.height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 rgba.data());
    glGenerateMipmap(GL_TEXTURE_2D);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    return picture.id;
}

bool SceneRenderer::sceneBox(const engine::EngineState& state, const std::vector<GpuLayer*>& drawList,
                             const StrokeSet& strokes, double minMax[6]) const {
    bool any = false;
    for (std::size_t i = 0; i < drawList.size(); ++i) {
        const GpuLayer& gpu = *drawList[i];
        if (!state.layers[i].outputFlag || !gpu.hasBounds) continue;
        const double lo[3] = {gpu.minMax[0], gpu.minMax[2], gpu.minMax[4]};
        const double hi[3] = {gpu.minMax[1], gpu.minMax[3], gpu.minMax[5]};
        growBox(minMax, lo, any);
        growBox(minMax, hi, any);
    }
    for (const std::vector<Stroke>* list : {&strokes.depthTested, &strokes.onTop})
        for (const Stroke& stroke : *list) {
            growBox(minMax, stroke.a, any);
            growBox(minMax, stroke.b, any);
        }
    if (state.flags[LIBFLAG_SHOW_SPHERES] != 0)
        for (const engine::SphereMarker& marker : state.spheres) {
            if (!marker.visibleFlag) continue;
            const double r = marker.diameter / 2;
            const double lo[3] = {marker.position[0] - r, marker.position[1] - r, marker.position[2] - r};
            const double hi[3] = {marker.position[0] + r, marker.position[1] + r, marker.position[2] + r};
            growBox(minMax, lo, any);
            growBox(minMax, hi, any);
        }
    if (state.flags[LIBFLAG_SHOW_BILLBOARDS] != 0)
        for (const engine::BillboardItem& item : state.billboards) {
            if (!item.data.visibleFlag) continue;
            // The picture turns with the view: a sphere of its diagonal holds it.
            const double reach = item.data.height * (1.0 + double(item.data.imageWidth) /
                                                               std::max(1, item.data.imageHeight));
            const double lo[3] = {item.data.pivot[0] - reach, item.data.pivot[1] - reach, item.data.pivot[2] - reach};
            const double hi[3] = {item.data.pivot[0] + reach, item.data.pivot[1] + reach, item.data.pivot[2] + reach};
            growBox(minMax, lo, any);
            growBox(minMax, hi, any);
        }
    return any;
}

void SceneRenderer::drawLayers(const engine::EngineState& state, const ViewMatrices& view,
                               const std::vector<GpuLayer*>& drawList, const double minMax[6],
                               const QVector3D& sunInView) {
    const RenderMode mode = renderModeFromFlag(state.flags[LIBFLAG_RENDER_MODE]);
    const bool useTextures = state.flags[LIBFLAG_USE_TEXTURES] != 0 && mode != RenderMode::HeightColour;
    const double zSpan = minMax[5] - minMax[4];
    textured_->bind();
    textured_->setUniformValue("projection", view.projection);
    textured_->setUniformValue("image", 0);
    shaded_->bind();
    shaded_->setUniformValue("projection", view.projection);
    shaded_->setUniformValue("sunDirection", sunInView);
    shaded_->setUniformValue("byHeight", mode == RenderMode::HeightColour);
    shaded_->setUniformValue("lowColour", QVector3D(state.colorMapLow[0], state.colorMapLow[1], state.colorMapLow[2]));
    shaded_->setUniformValue("highColour",
                             QVector3D(state.colorMapHigh[0], state.colorMapHigh[1], state.colorMapHigh[2]));
    shaded_->setUniformValue("heightScale", zSpan > 0 ? float(1.0 / zSpan) : 0.0f);
    glActiveTexture(GL_TEXTURE0);
    if (state.flags[LIBFLAG_BACKFACE_CULL] != 0) {
        glEnable(GL_CULL_FACE);
        glCullFace(GL_BACK);
        glFrontFace(GL_CCW);
    }
    if (mode == RenderMode::Wireframe) glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    for (std::size_t i = 0; i < drawList.size(); ++i) {
        const engine::Layer& layer = state.layers[i];
        const GpuLayer& gpu = *drawList[i];
        if (!layer.outputFlag || gpu.indexCount == 0) continue;
        unsigned texture = 0;
        if (useTextures && gpu.textured && !layer.texturePath.empty())
            texture = textureFor(layer.texturePath, state.maxTextureExponent, gpu.refreshed);
        QOpenGLShaderProgram& program = texture ? *textured_ : *shaded_;
        program.bind();
        program.setUniformValue("modelView", modelViewAt(view, gpu.origin));
        if (texture) {
            glBindTexture(GL_TEXTURE_2D, texture);
        } else {
            program.setUniformValue("colour", QVector3D(layer.diffuse[0], layer.diffuse[1], layer.diffuse[2]));
            program.setUniformValue("heightOffset", float(gpu.origin[2] - minMax[4]));
        }
        glBindVertexArray(gpu.vao);
        glDrawElements(GL_TRIANGLES, gpu.indexCount, GL_UNSIGNED_INT, nullptr);
    }
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glDisable(GL_CULL_FACE);
    glBindVertexArray(0);
}

void SceneRenderer::drawLayerLines(const engine::EngineState& state, const ViewMatrices& view,
                                   const std::vector<GpuLayer*>& drawList, float pixelScale, int width, int height) {
    lines_->bind();
    lines_->setUniformValue("projection", view.projection);
    lines_->setUniformValue("viewport", QVector2D(float(width), float(height)));
    lines_->setUniformValue("pixelScale", pixelScale);
    lines_->setUniformValue("pullToEye", kLayerLinePull);
    for (std::size_t i = 0; i < drawList.size(); ++i) {
        const engine::Layer& layer = state.layers[i];
        const GpuLayer& gpu = *drawList[i];
        if (!layer.outputFlag || gpu.lineIndexCount == 0) continue;
        lines_->setUniformValue("modelView", modelViewAt(view, gpu.origin));
        glBindVertexArray(gpu.lineVao);
        lines_->setAttributeValue(1, layer.diffuse[0], layer.diffuse[1], layer.diffuse[2]);
        lines_->setAttributeValue(2, kLayerLineWidth);
        glDrawElements(GL_LINES, gpu.lineIndexCount, GL_UNSIGNED_INT, nullptr);
    }
    glBindVertexArray(0);
}

void SceneRenderer::drawSpheres(const engine::EngineState& state, const ViewMatrices& view, long long milliseconds,
                                const QVector3D& sunInView) {
    if (state.flags[LIBFLAG_SHOW_SPHERES] == 0 || state.spheres.empty()) return;
    shaded_->bind();
    shaded_->setUniformValue("projection", view.projection);
    shaded_->setUniformValue("sunDirection", sunInView);
    shaded_->setUniformValue("byHeight", false);
    glBindVertexArray(sphereVao_);
    for (std::size_t i = 0; i < state.spheres.size(); ++i) {
        const engine::SphereMarker& marker = state.spheres[i];
        if (!marker.visibleFlag || !(marker.diameter > 0)) continue;
        float rgb[3];
        if (int(i) == state.selectedSphere)
            std::memcpy(rgb, state.measureLook.rgbSelected, sizeof rgb);
        else
            sphereColourAt(marker, milliseconds, rgb);
        QMatrix4x4 modelView = modelViewAt(view, marker.position);
        modelView.scale(float(marker.diameter / 2));
        shaded_->setUniformValue("modelView", modelView);
        shaded_->setUniformValue("colour", QVector3D(rgb[0], rgb[1], rgb[2]));
        glDrawElements(GL_TRIANGLES, sphereIndexCount_, GL_UNSIGNED_INT, nullptr);
    }
    glBindVertexArray(0);
}

void SceneRenderer::drawBillboards(const engine::EngineState& state, const ViewMatrices& view,
                                   const engine::ViewFrame& frame) {
    if (state.flags[LIBFLAG_SHOW_BILLBOARDS] == 0) {
        for (GpuPicture& picture : pictures_) glDeleteTextures(1, &picture.id);
        pictures_.clear();
        return;
    }
    std::vector<float> corners;
    std::vector<std::pair<std::size_t, unsigned>> drawn;  // billboard, texture
    for (std::size_t i = 0; i < state.billboards.size(); ++i) {
        const engine::BillboardItem& item = state.billboards[i];
        BillboardQuad quad;
        if (!item.data.visibleFlag || !billboardQuad(item.data, frame, quad)) continue;
        const unsigned texture = pictureFor(i, item);
        if (!texture) continue;
        static const float uv[4][2] = {{0, 1}, {1, 1}, {1, 0}, {0, 0}};
        for (int c = 0; c < 4; ++c) {
            const double shifted[3] = {quad.corners[c][0] - view.eye[0], quad.corners[c][1] - view.eye[1],
                                       quad.corners[c][2] - view.eye[2]};
            double d[3];
            toDrawing(shifted, d);
            corners.insert(corners.end(), {float(d[0]), float(d[1]), float(d[2]), uv[c][0], uv[c][1]});
        }
        drawn.emplace_back(i, texture);
    }
    for (std::size_t i = state.billboards.size(); i < pictures_.size(); ++i) glDeleteTextures(1, &pictures_[i].id);
    if (pictures_.size() > state.billboards.size()) pictures_.resize(state.billboards.size());
    if (drawn.empty()) return;
    picture_->bind();
    picture_->setUniformValue("projection", view.projection);
    picture_->setUniformValue("modelView", view.rotation);
    picture_->setUniformValue("image", 0);
    glActiveTexture(GL_TEXTURE0);
    glEnable(GL_BLEND);
    // The framebuffer's alpha stays opaque so saved pictures have no holes.
    glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ZERO, GL_ONE);
    glBindVertexArray(quadVao_);
    glBindBuffer(GL_ARRAY_BUFFER, quadVbo_);
    glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(corners.size() * sizeof(float)), corners.data(), GL_STREAM_DRAW);
    for (std::size_t k = 0; k < drawn.size(); ++k) {
        const BILLBOARD_DATA& data = state.billboards[drawn[k].first].data;
        picture_->setUniformValue("colour", QVector3D(data.rgb_Line_Array[0], data.rgb_Line_Array[1],
                                                      data.rgb_Line_Array[2]));
        picture_->setUniformValue("replaceColour", data.oglReplaceFlag != 0);
        glBindTexture(GL_TEXTURE_2D, drawn[k].second);
        glDrawArrays(GL_TRIANGLE_FAN, GLint(k * 4), 4);
    }
    glDisable(GL_BLEND);
    glBindVertexArray(0);
}

void SceneRenderer::drawStrokes(const std::vector<Stroke>& strokes, const ViewMatrices& view, float pixelScale,
                                int width, int height) {
    if (strokes.empty()) return;
    std::vector<float> vertices;
    vertices.reserve(strokes.size() * 2 * kStrokeFloats);
    for (const Stroke& stroke : strokes)
        if (stroke.line) {
            appendStrokeVertex(stroke.a, stroke, view.eye, vertices);
            appendStrokeVertex(stroke.b, stroke, view.eye, vertices);
        }
    const GLint lineVertexCount = GLint(vertices.size() / kStrokeFloats);
    for (const Stroke& stroke : strokes)
        if (!stroke.line) appendStrokeVertex(stroke.a, stroke, view.eye, vertices);
    const GLint pointVertexCount = GLint(vertices.size() / kStrokeFloats) - lineVertexCount;

    glBindVertexArray(dynamicVao_);
    glBindBuffer(GL_ARRAY_BUFFER, dynamicVbo_);
    glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(vertices.size() * sizeof(float)), vertices.data(), GL_STREAM_DRAW);
    if (lineVertexCount > 0) {
        lines_->bind();
        lines_->setUniformValue("projection", view.projection);
        lines_->setUniformValue("modelView", view.rotation);
        lines_->setUniformValue("viewport", QVector2D(float(width), float(height)));
        lines_->setUniformValue("pixelScale", pixelScale);
        lines_->setUniformValue("pullToEye", kStrokePull);
        glDrawArrays(GL_LINES, 0, lineVertexCount);
    }
    if (pointVertexCount > 0) {
        points_->bind();
        points_->setUniformValue("projection", view.projection);
        points_->setUniformValue("modelView", view.rotation);
        points_->setUniformValue("pixelScale", pixelScale);
        points_->setUniformValue("pullToEye", kStrokePull);
        glEnable(GL_PROGRAM_POINT_SIZE);
        glDrawArrays(GL_POINTS, lineVertexCount, pointVertexCount);
        glDisable(GL_PROGRAM_POINT_SIZE);
    }
    glBindVertexArray(0);
}

void SceneRenderer::render(engine::EngineState& state, int width, int height, float pixelScale,
                           long long milliseconds) {
    if (!ready_ || width <= 0 || height <= 0) return;
    std::vector<GpuLayer*> drawList;
    syncLayers(state, drawList);
    for (auto& entry : textures_) entry.second.used = false;

    const StrokeSet strokes = overlayStrokes(state);
    double minMax[6] = {0, 0, 0, 0, 0, 0};
    const bool haveBox = sceneBox(state, drawList, strokes, minMax);
    const engine::ViewFrame frame = engine::currentViewFrame(state);
    const ViewMatrices view = viewMatrices(frame, width, height, haveBox ? minMax : nullptr);

    glViewport(0, 0, width, height);
    glClearColor(kBackground[0], kBackground[1], kBackground[2], 1.0f);
    glClearDepth(1.0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glDisable(GL_BLEND);

    double sun[3];
    toDrawing(kSunDirection, sun);
    const QVector3D sunInView =
        view.rotation.mapVector(QVector3D(float(sun[0]), float(sun[1]), float(sun[2]))).normalized();

    drawLayers(state, view, drawList, minMax, sunInView);
    drawLayerLines(state, view, drawList, pixelScale, width, height);
    drawSpheres(state, view, milliseconds, sunInView);
    drawBillboards(state, view, frame);
    drawStrokes(strokes.depthTested, view, pixelScale, width, height);
    glDisable(GL_DEPTH_TEST);
    drawStrokes(strokes.onTop, view, pixelScale, width, height);

    for (auto it = textures_.begin(); it != textures_.end();) {
        if (it->second.used) {
            ++it;
        } else {
            glDeleteTextures(1, &it->second.id);
            it = textures_.erase(it);
        }
    }
    glBindTexture(GL_TEXTURE_2D, 0);
    glUseProgram(0);
}

}  // namespace render
