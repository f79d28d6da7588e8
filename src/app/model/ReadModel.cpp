#include "ReadModel.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <chrono>
#include <cstdio>

#include "AddModels.h"
#include "LayerTable.h"
#include "ModelComment.h"
#include "ModelGisFiles.h"
#include "ModelOpening.h"
#include "ModelPaths.h"
#include "ModelPhotographs.h"
#include "ModelSession.h"
#include "ModelZip.h"
#include "NorthArrow.h"
#include "TacticalGrid.h"
#include "TextureLimit.h"
#include "Viewport.h"
#include "app/services/FileDialogs.h"
#include "app/services/FileHelpers.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/OrvoIni.h"
#include "app/services/RunLog.h"
#include "app/services/SunGlobalLog.h"
#include "app/session/CameraState.h"
#include "app/session/DispatchState.h"
#include "app/session/DriveType.h"
#include "app/session/MainFormState.h"
#include "app/session/RubberbandState.h"
#include "app/session/SessionSettings.h"
#include "app/session/StartupState.h"
#include "app/session/ViewerSettings.h"
#include "geo/Frames.h"
#include "geo/CoordinateSystem.h"
#include "geo/GeoConversions.h"
#include "geo/GeoState.h"
#include "geo/PrjMenu.h"
#include "scene/EngineSession.h"
#include "scene/FileNameCase.h"
#include "scene/engine_interface.h"
#include "solar/design/PanelDaeEpsg.h"
#include "solar/design/PanelDaeImport.h"
#include "solar/design/PanelImport.h"
#include "solar/design/PanelStore.h"

namespace {

using Clock = std::chrono::steady_clock;

bool exists(const std::string& path) { return !path.empty() && QFileInfo::exists(QString::fromStdString(path)); }

// The open's texts go to the status strip without drawing: the open ends in one render.
void setStripText(const QString& text) { At3d_StatusBar_Set_Text(text.toUtf8().constData()); }

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}


// The names that follow from the model's path, and its folders beside it.
void deriveModelNames(const std::string& path) {
    ModelSession& model = modelSession();
    const std::string M = FolderOf(path);
    const std::string customer = FindFileNoCase(M + "Customer.TXT");
    model.Customer = customer.empty() ? QString() : StringFromFile(QString::fromStdString(customer));
    model.FLIPPED = BaseNameOf(path).find("Flipped") != std::string::npos;
    const DriveKind drive = DriveTypeOf(path);
    model.IsRemoteDrive = drive == DriveKind::Remote;
    PrintRunLog("Drive %s  is %s\n", M.c_str(), DriveKindName(drive));

    WriteSessionSetting("Viewer3D", "Last Folder", M);
    SetModelFolders(path);
}

// The model's coordinate system before the read: its ".prj", or one the
// operator copies beside it from a similar model.
void findCoordinateSystem(const std::string& path, bool isDae) {
    ModelSession& model = modelSession();
    model.PRJ = FindPrjFile(path);
    if (model.PRJ.empty()) {
        geoState().GlobalCS.reset();
        geoState().EPSG = -1;
        // A panel or model COLLADA file may carry its EPSG code instead.
        if (isDae) {
            const int epsg = GetEPSGFromDAE(QString::fromStdString(path));
            if (epsg >= 0) {
                geoState().EPSG = epsg;
                geoState().GlobalCS = GlobalCSFactory::ByEPSG(epsg);
                return;
            }
        }
        if (AddPRJ1Click(path)) model.PRJ = FindPrjFile(path);
    }
    if (!model.PRJ.empty()) LoadGlobalCS(model.PRJ);
}

void setMeasureListLook() {
    RubberbandState& r = rubberbandState();
    const float blue[3] = {0, 0, 1}, green[3] = {0, 1, 0}, red[3] = {1, 0, 0}, magenta[3] = {1, 0, 1};
    std::copy(blue, blue + 3, r.rgbLineArray_ML);
    std::copy(green, green + 3, r.rgbPoint1Array_ML);
    std::copy(red, red + 3, r.rgbPoint2Array_ML);
    r.pointsFlag_ML = 0;
    At3d_MeasureList_Set_Parameters(r.rgbLineArray_ML, r.rgbPoint1Array_ML, r.rgbPoint2Array_ML, r.lineWidth_ML,
                                    r.pointSize_ML, r.depthTestFlag_ML, r.pointsFlag_ML);
    At3d_MeasureList_Set_Selected_Color(magenta);
    At3d_MeasureList_Set_Obstruction_Parameters(green, 8, 1);
}

void addDecals() {
    const StartupState& start = startupState();
    if (exists(start.LOGO)) At3d_View_Decal_Add("MyLogo", start.LOGO.c_str(), "Top_Left", 10, 0, 0, 0, 0, 1);
    if (exists(start.NORTHARROW)) {
        At3d_View_Decal_Add("NothrArrow", start.NORTHARROW.c_str(), "Top_Right", viewerSettings().NorthArrowSize, 0, 0,
                            0, 0, 1);
        At3d_WriteFlag(LIBFLAG_DECALS, 1);
    }
    if (exists(start.ORVODECAL))
        At3d_View_Decal_Add("OrvoDecal", start.ORVODECAL.c_str(), "Anywhere", 20, 0, 0, 85.1f, 95.1f, 1);
}

void prepareCameras() {
    CameraState& c = cameraState();
    c.roamingCameraName = "R1";
    At3d_Add_Roaming_Camera(c.roamingCameraName.c_str());
    c.cameraTotal = At3d_Roaming_Camera_Count();
    char name[AT3D_NAME_SIZE] = {};
    At3d_Roaming_Camera_Get_Name(0, name);
    c.defaultCameraName = name;
    c.activeCameraName = name;
    if (c.cameraTotal == 0) {
        c.cameraID = c.activeCameraID = -1;
    } else {
        c.cameraID = std::clamp(c.cameraID, 0, c.cameraTotal - 1);
        c.activeCameraID = std::clamp(c.activeCameraID, 0, c.cameraTotal - 1);
    }
    SetHelpCaption("");
}

void setTextureLimit() {
    ModelSession& model = modelSession();
    model.user_Max_Texture_Size = viewerSettings().REDUCEJPGSIZE;
    model.MemoryGB = GetFreeMemoryEx();
    const TextureLimit limit = TextureLimitFor(model.user_Max_Texture_Size, model.MemoryGB, startupState().IntelGPU);
    model.powerOf2_Max_Texture_Size = limit.exponent;
    model.ResolutionRemark = limit.ResolutionRemark;
    model.ResolutionReason = limit.ResolutionReason;
    // A red status text warns that textures are shown reduced.
    if (limit.warn) viewerSettings().At3d_StatusBar_COLOR = 255;
    At3d_Set_Max_Texture_Size(limit.exponent);
}

void openSolarLog() {
    ModelSession& model = modelSession();
    model.ModuleType = ORVOINI().readString("Solvane3D", "ModuleType", "");
    if (!model.ModuleType.empty()) OpenSolarRunLog(model.INPUTFILENAME, startupState().PROCESSPID);
}

void logModelFacts() {
    const LayerTable& table = layerTable();
    const FrameState& f = frameState();
    PrintRunLog("%s\n", StatusStripText().toUtf8().constData());
    PrintRunLog("Layers %d Vertices %d Faces %d\n", table.NL, table.NV, table.NF);
    PrintRunLog("Xmin, Xmax %.2lf %.2lf\n", f.OriginalModelMinMax[0], f.OriginalModelMinMax[1]);
    PrintRunLog("Ymin, Ymax %.2lf %.2lf\n", f.OriginalModelMinMax[2], f.OriginalModelMinMax[3]);
    PrintRunLog("Zmin, Zmax %.2lf %.2lf\n", f.OriginalModelMinMax[4], f.OriginalModelMinMax[5]);
}

// The counts of photographs in the status text and the help that goes with them.
void showPhotographCounts() {
    ModelSession& model = modelSession();
    QString status = StatusStripText();
    if (model.KamaOblique > 0) {
        status += "  " + QString::number(model.KamaOblique) + " OBLIQUE IMAGES";
        if (model.KamaFacades > 0) status += "  " + QString::number(model.KamaFacades) + " FACADE IMAGES";
        model.INDOOR = false;
    } else if (model.KamaOPK > 0) {
        status = "  " + QString::number(model.KamaOPK) + " INDOOR IMAGES" + status;
        model.INDOOR = true;
        SetControlChecked("BackfaceCullingBtn", true);
        At3d_WriteFlag(LIBFLAG_BACKFACE_CULL, 1);
    } else {
        return;
    }
    setStripText(status);
    model.RegularHelp = model.RegularHelp_;
    if (!model.RegularHelp.contains(model.ShowObliques)) model.RegularHelp += model.ShowObliques;
    SetHelpCaption(model.RegularHelp);
}

void writeThumbnail() {
    const ModelSession& model = modelSession();
    if (exists(model.JPG)) return;
    const int width = static_cast<int>(mainFormHost().viewPanelWidth() * 2.5);
    const int height = static_cast<int>(mainFormHost().viewPanelHeight() * 2.5);
    At3d_Save_Thumbnail_Image(model.JPG.c_str(), width, height);
}

void findConvexHull() {
    ModelSession& model = modelSession();
    const QStringList hulls = Find_Files(QString::fromStdString(ModelFolder()) + "*convexhull.shp", false);
    if (!hulls.isEmpty()) ShapeExtentCenter(hulls.first().toStdString(), model.ConvexHullCenterPoint);
}

}  // namespace

bool OpenSolarRunLog(const std::string& modelPath, int processId) {
    ModelSession& model = modelSession();
    model.Solarpath = SideFile(FolderOf(modelPath), "Reports") + "/";
    QDir().mkpath(QString::fromStdString(model.Solarpath));
    SunGlobalLog& log = sunGlobalLog();
    log.SunGlobalLogfileName =
        model.Solarpath + std::to_string(processId) + "_" + BaseNameOf(modelPath) + "_ComprehensiveLog.LOG";
    if (log.SunGlobalLogfile) return true;
    log.SunGlobalLogfile = std::fopen(log.SunGlobalLogfileName.c_str(), "w");
    if (!log.SunGlobalLogfile) return false;
    std::setvbuf(log.SunGlobalLogfile, nullptr, _IONBF, 0);
    PrintSunLog(" ++++++ Initialized log file ++++++++++++\n");
    return true;
}

QStringList AskForModels() {
    return OrvoOpenFiles(READ_MODEL_TITLE, READ_MODEL_FILTER,
                         QString::fromStdString(ORVOINI().readString("Viewer3D", "Last Folder", "")));
}

int ReadTypeOfModel(const std::string& path, ModelKind& kind) {
    kind = ModelKind{};
    const QString suffix = QFileInfo(QString::fromStdString(path)).suffix().toLower();
    if (suffix == "dxf") return kind.IsDXF = true, AT3D_READ_DXF;
    if (suffix == "atm") return kind.IsATM = true, AT3D_READ_ATM;
    if (suffix == "3ds") return kind.Is3DS = true, AT3D_READ_3DS;
    if (suffix == "cob") return kind.IsTRUETYPE = true, AT3D_READ_COB;
    if (suffix == "stl") return kind.IsSTL = true, AT3D_READ_STL;
    if (suffix == "dae") return kind.IsDAE = true, AT3D_READ_DAE;
    kind.IsOBJ = true;
    return AT3D_READ_OBJ;
}

void OpenFrommenuClick() {
    startupState().GlobalARGVforDebug.clear();
    modelSession().TSImportedFiles.clear();
    At3d_MeasureList_Clear();
    At3d_Measure_Billboard_Delete_All();
    At3d_Sphere_Marker_Delete_All();
    ReadModelBtnClick();
}

void Read_3D_File() {
    if (!engineSession().dllOpen) return;
    mainFormHost().showMainForm();
    ModelSession& model = modelSession();
    model.INPUTFILENAME.clear();
    const std::string& named = startupState().GlobalARGVforDebug;
    QStringList files = named.empty() ? AskForModels() : QStringList{QString::fromStdString(named)};
    if (files.isEmpty()) {
        SetControlVisible("ReadModelBtn", true);
        return;
    }
    const Clock::time_point start = Clock::now();
    FrameState& frame = frameState();
    std::fill(frame.OriginalobjectCenter, frame.OriginalobjectCenter + 3, 0.0);
    if (files.first().endsWith(".zip", Qt::CaseInsensitive)) files = UnzipModel(files.first().toStdString());
    model.TSImportedFiles = files;
    model.INPUTFILES = files;
    if (files.isEmpty()) return;
    const std::string path = files.first().toStdString();
    model.INPUTFILENAME = model.GlobalModelFileName = model.LastPathFileName = path;
    deriveModelNames(path);
    const std::string home = FindFileNoCase(ModelFolder() + "Home.vpt");
    if (!home.empty()) QFile::remove(QString::fromStdString(home));

    model.JPG = SideFile(FolderOf(path), BaseNameOf(path) + ".jpg");
    model.MTL = SideFile(FolderOf(path), BaseNameOf(path) + ".mtl");
    findCoordinateSystem(path, QFileInfo(files.first()).suffix().compare("dae", Qt::CaseInsensitive) == 0);
    const std::string offset = FindOffsetFile(path);
    std::string offsetProblem;
    if (!offset.empty()) ReadOffsetFile(offset, frame.Offset, &offsetProblem);
    if (!offsetProblem.empty()) {
        PrintRunLog("%s\n", offsetProblem.c_str());
        MyShowMessage(QString::fromStdString(offsetProblem));
    }
    At3d_SetProducedByName("Orvo Systems .");

    At3d_WriteFlag(LIBFLAG_READ_134, 0);
    At3d_WriteFlag(LIBFLAG_SCENE_77, 0);
    At3d_WriteFlag(LIBFLAG_READ_296, 1);
    At3d_WriteFlag(LIBFLAG_READ_263, 0);
    At3d_WriteFlag(LIBFLAG_READ_91, 1);
    cameraState().haveSavedLookAtFlag = 0;
    At3d_WriteFlag_LIBFLAG_NO_DRAW(1);
    const ViewerSettings& settings = viewerSettings();
    At3d_StatusBar_Show(1, settings.StatusbarHeight);
    At3d_StatusBar_Set_Font_Color(settings.At3d_StatusBar_COLOR);
    At3d_StatusBar_Set_Font_Size(14);
    SetHelpLabelColor(HELP_LABEL_SYSTEM_COLOR);
    At3d_WriteFlag(LIBFLAG_VIEW_291, 1);
    if (!exists(path)) {
        MyShowMessage("Missing\n" + QString::fromStdString(path));
        return;
    }

    model.ModelComment = ReadModelComment(path);
    const int type = ReadTypeOfModel(path, model.kind);
    int NL = 0, NF = 0;
    GetTotalVertices(NL, NF);
    engineSession().fileLoaded = At3d_Read(type, path.c_str(), 1);
    if (engineSession().fileLoaded && model.kind.IsDAE) {
        ReadPanelsOfModelFile(QString::fromStdString(path));
        AddPanelsT();
    }
    const int NV = GetTotalVertices(NL, NF);
    setStripText(QString::asprintf(" %d vertices and %d faces in %d layers in model %s", NV, NF, NL, path.c_str()));
    SetUpModelFrame(path, model.kind.IsOBJ, model.PRJ);
    // A failed read still ends the open: help, measure look, grid, arrow and
    // decals stand ready for the next model; only the camera has nothing to show.
    if (engineSession().fileLoaded) {
        GetCameraData();
        At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_OFF);
        SetControlChecked("Locations_Off", true);
    } else {
        SetControlVisible("ReadModelBtn", true);
    }
    SetHelpCaption(mainFormState().LabelForHelpCaption);
    At3d_WriteFlag(LIBFLAG_OPEN_292, 0);
    At3d_WriteFlag(LIBFLAG_OPEN_305, 0);
    mainFormHost().processPendingEvents();
    setMeasureListLook();
    TryToLoadtacticalGrid();
    PrepareNorthArrow();
    addDecals();
    FindModelPhotographs(path);
    model.readSeconds = secondsSince(start);
}

void ReadModelBtnClick() {
    ModelSession& model = modelSession();
    panelStore().NumPanelsCreated = 0;
    panelStore().NumPanelsCreatedT = 0;
    model.TSImportedFiles.clear();
    At3d_Clear();
    engineSession().fileLoaded = 0;
    frameState().SCALE = 1;
    frameState().scaleInForce = 1;
    dispatchState().DigiArmed = false;
    dispatchState().TDigitizedPoints.clear();
    model.KamaOblique = 0;
    model.OPKfile.clear();
    model.KamaOPK = model.KamaFacades = model.KamaOblixExtents = 0;
    model.RegularHelp_ = REGULAR_HELP;
    model.RegularHelp = model.RegularHelp_;
    prepareCameras();
    setTextureLimit();

    model.TSImportedFiles.clear();
    Read_3D_File();
    if (model.INPUTFILENAME.empty() || !engineSession().fileLoaded) return;
    openSolarLog();
    for (const char* item : {"Cropthemodel1", "Rectifymodel1", "Shiftthemodel1"}) SetControlVisible(item, model.kind.IsOBJ);

    At3d_WriteFlag(LIBFLAG_SHOW_MEASURES, 1);
    At3d_WriteFlag(LIBFLAG_SHOW_BILLBOARDS, 1);
    At3d_WriteFlag(LIBFLAG_SHOW_SPHERES, 1);
    SetBusyCursor(true);
    FullViewBtnClick();
    SetHelpCaption(model.RegularHelp);
    GetCameraData();
    logModelFacts();
    showPhotographCounts();
    setStripText(StatusStripText() + QString::asprintf(" %.1fs read in", model.readSeconds));
    writeThumbnail();

    if (model.INPUTFILES.size() > 1) AddmodelsClick(model.INPUTFILES.mid(1));
    int NL = 0, NF = 0;
    const int NV = GetTotalVertices(NL, NF);
    setStripText(QString::asprintf(" %d vertices and %d faces in %d layers   ", NV, NF, NL));
    At3d_Sphere_Marker_Delete_All();
    model.CENTERSPHEREVISIBLE = false;
    findConvexHull();
    if (model.TSImportedFiles.size() > 1)
        setStripText("Ready after adding " + QString::number(model.TSImportedFiles.size()) + " models");
    SaveViewport(ModelFolder() + "Home.vpt");
    At3d_RenderOpenGLScene();
}
