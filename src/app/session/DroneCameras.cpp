#include "DroneCameras.h"

QStringList DroneCameraTable() {
    return {
        "Drone,Focal35,W,H,Widthmm,Model,Focal,Global shutter,Max speed,Shot interval,FP version",
        "Mavic 3E,24,5280,3956,17.4,M3E,12.29,1,14,0.7,N",
        "Mavic 3T,24,8000,6000,6.4,M3T,4.4,  0,14,2,N",
        "Mavic 3 pro,24,5280,3956,12.64,L2D-20c,12.29,0,14,2,N",
        "Matrice 4E,24,5280,3956,17.4,M4E,12.29,1,14,0.5,N",
        "Matrice 4TD,24,8064,6048,7.98,M4TD,6.72,0,14,0.7,N",
        "Matrice 4E TELE,70,8064,6048,9.95,M4E,19.35,1,14,0.7,N",
        "Matrice 4TD TELE,70,8064,6048,9.95,M4TD,19.35,1,14,0.7,N",
        "Mini 4 Pro,24,8064,6048,6.72,FC8482,24.68,0,12,3,N",
        "M300 P1 (35mm),35,8192,5460,36,ZenmuseP1,35,1,14,1,N",
        "M300 P1 (24mm),24,8192,5460,36,ZenmuseP1,24,1,14,1,N",
        "M300 P1 (50mm),50,8192,5792,36,ZenmuseP1,50,1,14,1,O",
    };
}
