// A run speaks one language, help and wrong usage too.
#include "tool_fixture.h"

#include <gmock/gmock.h>

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

TEST_F(Tool, SpeaksGermanWhereItIsAsked) {
    dir.write("cut.dxf", "0\nSECTION\n2\nENTITIES\n0\nLINE\n8\nNOWHERE\n10\n1\n");
    dir.write("a.tdw", "no database");
    const struct {
        std::string line;
        const char *german, *english;
    } cases[] = {
        {"--help", "Aufruf: torva-dxf [OPTIONEN] BEFEHL", "Usage"},
        {"render --help", "Auch Layer, die aus oder gefroren sind", "Options"},
        {"inof", "unbekannter Befehl inof, war info gemeint?", "unknown"},
        {"info", "IN fehlt", "required"},
        {"info --frobnicate x", "unbekannte Option --frobnicate", "unknown"},
        {"render a.dxf b.png --size 3", "--size: der Wert 3 liegt nicht in", "range"},
        {"render a.dxf b.png --scale 1:2", "--scale braucht --paper", "requires"},
        {"info none.dxf", "none.dxf: Datei oder Ordner nicht gefunden", "No such"},
        {"info a.tdw", "a.tdw kann nicht geladen werden: es ist keine Zeichnungsdatei", "load"},
        {"convert cut.dxf b.png", "ist der Name eines Bildes; 'torva-dxf render' schreibt Bilder", "picture"},
        {"convert " + bracket + " none/b.dxf", "es gibt keinen Ordner", "folder"},
        {"render " + bracket + " b.png --view NONE", "Die Zeichnung hat keine Ansicht NONE", "no view"},
        {"validate cut.dxf", "cut.dxf:9: Fehler 208: Gruppe 10 wird nicht gefolgt von 20", "followed"},
        {"validate cut.dxf --repair b.dxf", "geheilt 110: EOF ist ergänzt", "is added"},
        {"info " + bracket, "Größe 300 × 255 mm, von -40 -130 bis 260 125", "size"},
        {"import " + bracket + " -o b.tdw", "Elemente in", "elements"},
    };
    for (const auto& [line, german, english] : cases) {
        const Outcome outcome = run(line, "LC_ALL=de_DE.UTF-8 HD_WORK_DIR=");
        const std::string all = outcome.out + outcome.err;
        EXPECT_THAT(all, AllOf(HasSubstr(german), Not(HasSubstr(english)))) << line;
        EXPECT_THAT(run(line + " --lang en").out + run(line + " --lang en").err, Not(HasSubstr(german)))
            << line;
    }
}
