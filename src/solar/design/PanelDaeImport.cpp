#include "PanelDaeImport.h"

#include <QDir>
#include <QFileInfo>
#include <QVector>

#include "PanelDaeText.h"
#include "PanelNames.h"
#include "PanelStore.h"
#include "PanelText.h"

using paneldae::AttributeValue;
using paneldae::PlainText;

namespace {

constexpr int kMaxImages = 100;

struct ImageEntry {
    QString id;
    QString file;
};

bool isImageFile(const QString& name) {
    static const char* const kinds[] = {".jpg", ".jpeg", ".png", ".bmp", ".tif", ".tiff", ".gif", ".webp"};
    const QString lower = name.toLower();
    for (const char* kind : kinds)
        if (lower.contains(QLatin1String(kind))) return true;
    return false;
}

// The images of <library_images>: the engine's export names each after its
// node, which is how a panel finds its own texture among many.
QVector<ImageEntry> imageTable(const QStringList& lines) {
    QVector<ImageEntry> images;
    bool inside = false;
    QString currentId;
    for (const QString& raw : lines) {
        const QString line = raw.trimmed();
        if (line.contains(QLatin1String("<library_images>"))) inside = true;
        if (!inside) continue;
        if (line.contains(QLatin1String("<image")) && line.contains(QLatin1String("id=")))
            currentId = AttributeValue(line, QStringLiteral("id"));
        if (line.contains(QLatin1String("<init_from>")) && !currentId.isEmpty()) {
            QString file = PlainText(paneldae::TagText(line, QStringLiteral("init_from"))).trimmed();
            if (file.startsWith(QLatin1String("file://"), Qt::CaseInsensitive)) file = file.mid(7);
            file = paneldae::LeafName(file);
            if (isImageFile(file) && images.size() < kMaxImages) images.append({currentId, file});
            currentId.clear();
        }
        if (line.contains(QLatin1String("</library_images>"))) inside = false;
    }
    return images;
}

QString textureByName(const QVector<ImageEntry>& images, const QString& name) {
    const QString safe = paneldae::SafeName(name);
    if (safe.isEmpty()) return QString();
    for (const ImageEntry& image : images)
        if (image.id.contains(safe)) return image.file;
    return QString();
}

// Which tags a line may set: all of them inside <panel_info>; by profile in
// the node-by-node reading.
enum class TagSet { All, Specs, Data };

bool isSpecsTag(const QString& tag) {
    return tag == QLatin1String("module_type") || tag == QLatin1String("original_filename") ||
           tag == QLatin1String("original_path") || tag == QLatin1String("name");
}

bool pointOf(const QString& line, TGIS_Point3D& p) {
    const QString x = AttributeValue(line, QStringLiteral("x"));
    const QString y = AttributeValue(line, QStringLiteral("y"));
    const QString z = AttributeValue(line, QStringLiteral("z"));
    if (x.isNull() || y.isNull() || z.isNull()) return false;
    p.X = x.toDouble();
    p.Y = y.toDouble();
    p.Z = z.toDouble();
    return true;
}

void applyLine(PANEL& panel, const QString& line, TagSet set) {
    if (!line.startsWith(QLatin1Char('<')) || line.startsWith(QLatin1String("</"))) return;
    qsizetype end = 1;
    while (end < line.size() && line[end] != QLatin1Char(' ') && line[end] != QLatin1Char('>') &&
           line[end] != QLatin1Char('/'))
        ++end;
    if (end == line.size()) return;
    const QString tag = line.mid(1, end - 1);
    if (set == TagSet::Specs && !isSpecsTag(tag)) return;
    if (set == TagSet::Data && isSpecsTag(tag)) return;

    static const char* const pointTags[] = {"center_point", "corner_ll", "corner_ul", "corner_ur", "corner_lr"};
    TGIS_Point3D* const points[] = {&panel.CenterPoint, &panel.Corners[0], &panel.Corners[1], &panel.Corners[2],
                                    &panel.Corners[3]};
    for (int i = 0; i < 5; ++i)
        if (line.startsWith(QLatin1Char('<') + QLatin1String(pointTags[i]) + QLatin1Char(' '))) {
            pointOf(line, *points[i]);
            return;
        }

    const QString text = PlainText(paneldae::TagText(line, tag)).trimmed();
    if (text.isEmpty()) return;
    const double number = text.toDouble();
    const int integer = paneldae::IntOfNumber(number);
    const bool yes = text.toLower() == QLatin1String("true");

    if (tag == QLatin1String("name")) SetPanelText(panel.Name, text);
    else if (tag == QLatin1String("module_type")) SetPanelText(panel.ModuleType, text);
    else if (tag == QLatin1String("picture")) SetPanelText(panel.TextureName, text);
    else if (tag == QLatin1String("original_filename") || tag == QLatin1String("original_path")) SetPanelText(panel.Filename, text);
    else if (tag == QLatin1String("length")) panel.Length = integer;
    else if (tag == QLatin1String("width")) panel.Width = integer;
    else if (tag == QLatin1String("thickness")) panel.Thickness = integer;
    else if (tag == QLatin1String("weight_kg")) panel.Weight_kg = number;
    else if (tag == QLatin1String("tilt")) panel.DTilt = number;
    else if (tag == QLatin1String("azimuth")) panel.DAzimuth = number;
    else if (tag == QLatin1String("lift")) panel.Lift = number;
    else if (tag == QLatin1String("landscape")) panel.Landscape = yes;
    else if (tag == QLatin1String("opacity")) panel.Opacity = integer;
    else if (tag == QLatin1String("gap_mm")) panel.Gapmm = integer;
    else if (tag == QLatin1String("repeat")) panel.Repeat = integer;
    else if (tag == QLatin1String("active")) panel.Active = yes;
    else if (tag == QLatin1String("roof_type")) panel.RoofType = integer;
    else if (tag == QLatin1String("power_rating_stc")) panel.PanelPowerratingKW = number;
    else if (tag == QLatin1String("efficiency")) panel.Efficiency = number;
    else if (tag == QLatin1String("power_rating_noct")) panel.MaxPowerNOCT_W = number;
    else if (tag == QLatin1String("noct_temperature")) panel.NOCT_C = number;
    else if (tag == QLatin1String("temp_coeff_pmax_percent_per_c")) panel.TempCoeff_Pmax_PercentPercent = number;
    else if (tag == QLatin1String("bifacial_factor_percent")) panel.BifacialFactor_Percent = number;
    else if (tag == QLatin1String("annual_degradation")) panel.AnnualDegradation = number;
    else if (tag == QLatin1String("cleaning_factor")) panel.Cleaningfactor = number;
    else if (tag == QLatin1String("epsg")) panel.EPSG = integer;
    else if (tag == QLatin1String("center_lat")) panel.CenterLat = number;
    else if (tag == QLatin1String("center_lon")) panel.CenterLon = number;
    else if (tag == QLatin1String("raw_energy_kwh")) panel.RawEnergy = number;
    else if (tag == QLatin1String("adjusted_energy_kwh")) panel.AdjustedEnergy = number;
    else if (tag == QLatin1String("shaded_hours")) panel.Shaded_Hours = integer;
    else if (tag == QLatin1String("shading_percent")) panel.Shading_Percent = number;
}

PANEL freshPanel(const QString& filename) {
    PANEL panel{};
    SetPanelText(panel.Filename, filename);
    panel.Opacity = 100;
    panel.Repeat = 1;
    panel.Active = true;
    panel.RoofType = 1;
    return panel;
}

class Staging {
public:
    explicit Staging(const QString& filename) : filename_(filename) {}
    void commit(PANEL& panel) {
        if (PanelText(panel.Filename).isEmpty()) SetPanelText(panel.Filename, filename_);
        PanelStore& store = panelStore();
        if (store.NumPanelsCreatedT >= MAX_PANELS) return;
        store.panelsT[store.NumPanelsCreatedT++] = panel;
        ++added_;
    }
    int added() const { return added_; }

private:
    QString filename_;
    int added_ = 0;
};

void readPanelInfoBlocks(const QStringList& lines, const QVector<ImageEntry>& images, Staging& staging,
                         const QString& filename) {
    bool inside = false;
    PANEL panel{};
    for (const QString& raw : lines) {
        const QString line = raw.trimmed();
        if (line.contains(QLatin1String("<panel_info>"))) {
            panel = freshPanel(filename);
            if (!images.isEmpty()) SetPanelText(panel.TextureName, images.first().file);
            inside = true;
        } else if (inside && line.contains(QLatin1String("</panel_info>"))) {
            if (PanelText(panel.Name).trimmed().isEmpty()) SetPanelText(panel.Name, QStringLiteral("PANEL"));
            const QString own = textureByName(images, PanelText(panel.Name));
            if (!own.isEmpty()) SetPanelText(panel.TextureName, own);
            staging.commit(panel);
            inside = false;
        } else if (inside) {
            applyLine(panel, line, TagSet::All);
        }
    }
}

void readNodeByNode(const QStringList& lines, const QVector<ImageEntry>& images, Staging& staging,
                    const QString& filename) {
    QString nodeId, nodeName;
    TagSet profile = TagSet::All;
    bool inProfile = false;
    bool started = false;
    PANEL panel{};
    for (const QString& raw : lines) {
        const QString line = raw.trimmed();
        if (line.contains(QLatin1String("<node"))) {
            nodeId = AttributeValue(line, QStringLiteral("id"));
            nodeName = AttributeValue(line, QStringLiteral("name"));
        } else if (line.contains(QLatin1String("<technique"))) {
            const QString name = AttributeValue(line, QStringLiteral("profile"));
            inProfile = name == QLatin1String("solar_panel_data") || name == QLatin1String("solar_panel_specs");
            if (!inProfile) continue;
            profile = name == QLatin1String("solar_panel_specs") ? TagSet::Specs : TagSet::Data;
            if (!started) {
                panel = freshPanel(filename);
                SetPanelText(panel.ModuleType, QStringLiteral("UnknownType"));
                SetPanelText(panel.Name, PlainText(nodeName.isEmpty() ? nodeId : nodeName));
                SetPanelText(panel.TextureName, textureByName(images, PanelText(panel.Name)));
                started = true;
            }
        } else if (line.contains(QLatin1String("</technique>"))) {
            inProfile = false;
        } else if (line.contains(QLatin1String("</node>"))) {
            if (started) staging.commit(panel);
            started = false;
            inProfile = false;
        } else if (started && inProfile) {
            applyLine(panel, line, profile);
        }
    }
}

}  // namespace

int GetPanelsFromDae(const QString& filename) {
    QStringList lines;
    if (!paneldae::ReadLines(filename, lines)) return 0;
    const QVector<ImageEntry> images = imageTable(lines);
    Staging staging(filename);
    bool hasPanelInfo = false;
    for (const QString& line : lines)
        if (line.contains(QLatin1String("<panel_info>"))) {
            hasPanelInfo = true;
            break;
        }
    if (hasPanelInfo)
        readPanelInfoBlocks(lines, images, staging, filename);
    else
        readNodeByNode(lines, images, staging, filename);
    return staging.added();
}

int ReadPanelsOfModelFile(const QString& filename) {
    PanelStore& store = panelStore();
    const int first = store.NumPanelsCreatedT;
    const int read = GetPanelsFromDae(filename);
    const QFileInfo source(filename);
    const bool ownFile =
        read == 1 && QDir(source.absolutePath()) == QDir(store.PANELSFOLDER) && !store.PANELSFOLDER.isEmpty();
    for (int i = first; i < store.NumPanelsCreatedT; ++i) {
        PANEL& p = store.panelsT[static_cast<std::size_t>(i)];
        if (ownFile) {
            SetPanelText(p.Filename, source.absoluteFilePath());
            continue;
        }
        const QString leaf = paneldae::LeafName(PanelText(p.Filename));
        const bool usable = !leaf.isEmpty() && leaf.compare(source.fileName(), Qt::CaseInsensitive) != 0;
        SetPanelText(p.Filename, usable ? store.PANELSFOLDER + leaf : PanelFileNameFromName(PanelText(p.Name)));
    }
    return read;
}

QStringList PanelFilesOfModel() {
    QStringList files;
    const QDir folder(panelStore().PANELSFOLDER);
    if (panelStore().PANELSFOLDER.isEmpty()) return files;
    for (const QFileInfo& file : folder.entryInfoList(QDir::Files, QDir::Name))
        if (file.suffix().compare(QLatin1String("dae"), Qt::CaseInsensitive) == 0) files << file.absoluteFilePath();
    return files;
}
