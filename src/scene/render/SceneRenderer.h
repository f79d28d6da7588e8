// Draws the engine's state with OpenGL 3.3 into the bound framebuffer: the
// layers, their line geometry, sphere markers, billboards, the measure list
// and the rubberband. Keeps the layers on the card between frames and sends
// a layer again when the engine marks it (gpuUpdate) or it is new.
// Every call needs the renderer's context current.
#pragma once

#include <QOpenGLFunctions_3_3_Core>
#include <QOpenGLShaderProgram>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "DrawingFrame.h"
#include "OverlayStrokes.h"
#include "scene/engine/EngineState.h"
#include "scene/engine/TextureImage.h"

namespace render {

class SceneRenderer : protected QOpenGLFunctions_3_3_Core {
public:
    // A renderer that lives with the window takes the layers' gpuUpdate
    // marks; a one-off renderer (a thumbnail without window) leaves them.
    explicit SceneRenderer(bool takesUpdateMarks);
    ~SceneRenderer();
    SceneRenderer(const SceneRenderer&) = delete;
    SceneRenderer& operator=(const SceneRenderer&) = delete;

    // False when the context can't run the programs (logged).
    bool initialize();
    bool initialized() const { return ready_; }
    // Draws a frame of width x height pixels; pixelScale turns line widths
    // and point sizes from surface pixels into framebuffer pixels.
    void render(engine::EngineState& state, int width, int height, float pixelScale, long long milliseconds);
    // Frees every object on the card.
    void release();

private:
    struct GpuLayer {
        unsigned vao = 0, vbo = 0, ibo = 0;
        int indexCount = 0;
        unsigned lineVao = 0, lineVbo = 0, lineIbo = 0;
        int lineIndexCount = 0;
        double origin[3] = {0, 0, 0};
        double minMax[6] = {0, 0, 0, 0, 0, 0};
        bool hasBounds = false;
        bool textured = false;
        bool refreshed = false;  // sent this frame
        bool seen = false;
    };
    struct GpuTexture {
        unsigned id = 0;
        const engine::TextureImage* source = nullptr;
        std::weak_ptr<const engine::TextureImage> watch;  // the engine's cache owns the pixels
        bool used = false;
    };
    struct GpuPicture {
        unsigned id = 0;
        int width = 0, height = 0, alpha = 0;
        std::vector<std::uint8_t> bytes;
    };

    void syncLayers(engine::EngineState& state, std::vector<GpuLayer*>& drawList);
    void uploadLayer(const engine::Layer& layer, GpuLayer& gpu);
    void releaseLayer(GpuLayer& gpu);
    unsigned textureFor(const std::string& path, int maxExponent, bool refresh);
    // Level 0 and every smaller level down to 1 x 1 into the bound texture.
    void uploadMipmapped(const std::uint8_t* rgba, int width, int height);
    unsigned pictureFor(std::size_t index, const engine::BillboardItem& item);
    bool sceneBox(const engine::EngineState& state, const std::vector<GpuLayer*>& drawList,
                  const StrokeSet& strokes, double minMax[6]) const;
    void drawLayers(const engine::EngineState& state, const ViewMatrices& view, const std::vector<GpuLayer*>& drawList,
                    const double minMax[6], const QVector3D& sunInView);
    void drawLayerLines(const engine::EngineState& state, const ViewMatrices& view,
                        const std::vector<GpuLayer*>& drawList, float pixelScale, int width, int height);
    void drawSpheres(const engine::EngineState& state, const ViewMatrices& view, long long milliseconds,
                     const QVector3D& sunInView);
    void drawBillboards(const engine::EngineState& state, const ViewMatrices& view,
                        const engine::ViewFrame& frame);
    void drawStrokes(const std::vector<Stroke>& strokes, const ViewMatrices& view, float pixelScale, int width,
                     int height);
    void createSphereMesh();

    bool takesUpdateMarks_;
    bool ready_ = false;
    int maxTextureSize_ = 0;
    std::unique_ptr<QOpenGLShaderProgram> textured_, shaded_, picture_, lines_, points_;
    std::unordered_map<std::string, GpuLayer> layers_;
    std::map<std::string, GpuTexture> textures_;
    std::vector<GpuPicture> pictures_;
    unsigned sphereVao_ = 0, sphereVbo_ = 0, sphereIbo_ = 0;
    int sphereIndexCount_ = 0;
    unsigned dynamicVao_ = 0, dynamicVbo_ = 0;      // strokes: x y z r g b size
    unsigned quadVao_ = 0, quadVbo_ = 0;            // billboards: x y z u v
};

}  // namespace render
