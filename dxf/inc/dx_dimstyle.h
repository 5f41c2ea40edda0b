// Places of the variables of a dimension style in DX_DIM_STYLE.
#pragma once

enum DX_DIM_STRING : int { DIMPOST, DIMAPOST };

enum DX_DIM_REAL : int {
    // 40 …
    DIMSCALE,
    DIMASZ,
    DIMEXO,
    DIMDLI,
    DIMEXE,
    DIMRND,
    DIMDLE,
    DIMTP,
    DIMTM,
    // 140 …
    DIMTXT,
    DIMCEN,
    DIMTSZ,
    DIMALTF,
    DIMLFAC,
    DIMTVP,
    DIMTFAC,
    DIMGAP,
    DIMALTRND,
};

enum DX_DIM_INTEGER : int {
    // 71 …
    DIMTOL,
    DIMLIM,
    DIMTIH,
    DIMTOH,
    DIMSE1,
    DIMSE2,
    DIMTAD,
    DIMZIN,
    DIMAZIN,
    // 170 …
    DIMALT,
    DIMALTD,
    DIMTOFL,
    DIMSAH,
    DIMTIX,
    DIMSOXD,
    DIMCLRD,
    DIMCLRE,
    DIMCLRT,
    DIMADEC,
    // 270 …
    DIMUNIT,
    DIMDEC,
    DIMTDEC,
    DIMALTU,
    DIMALTTD,
    DIMAUNIT,
    DIMFRAC,
    DIMLUNIT,
    DIMDSEP,
    DIMTMOVE,
    DIMJUST,
    DIMSD1,
    DIMSD2,
    DIMTOLJ,
    DIMTZIN,
    DIMALTZ,
    DIMALTTZ,
    DIMFIT,
    DIMUPT,
    DIMATFIT,
    // 340 …
    DIMTXSTY,
    DIMLDRBLK,
    DIMBLK,
    DIMBLK1,
    DIMBLK2,
    // 371 …
    DIMLWD,
    DIMLWE,
};
