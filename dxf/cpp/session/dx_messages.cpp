#include "dx_messages.h"

#include "trt.h"

#include <algorithm>
#include <iterator>

namespace {

struct Message {
    int number;
    const char* text;
};

// clang-format off
constexpr Message MESSAGES[] = {
    {2828, "Plot"},
    {3185, "Information"},
    {4612, "Start DXF-Import"},
    {4613, "Ende  DXF-Import"},
    {4615, "Start DXF-Export"},
    {4616, "Ende  DXF-Export"},
    {4617, "Fehler bei DXF-Export"},
    {5701, "Warnung: Keine %s-Section gefunden..."},
    {5703, "Block %s nicht definiert!"},
    {5704, "Linientyp %s nicht definiert!"},
    {5705, "Mit Fehler %d beendet!"},
    {5707, "Datei %s konnte nicht geöffnet werden!"},
    {5708, "Name der zu ladenden %s-Datei:"},
    {5709, "Name der zu speichernden %s-Datei:"},
    {5710, "F E R T I G ..."},
    {5712, "Zeichne ..."},
    {5713, "Keine Section gefunden!"},
    {5714, "End-Of-File vor logischem Ende -> Fehler!"},
    {5715, "Zeichnungsparameter werden gelesen ..."},
    {5717, "Direkt rekursive INSERTs von Block %s."},
    {5718, "Einfügen (INSERT) ignoriert!"},
    {5719, "Warnung: Indirekt rekursive INSERTs von Block %s."},
    {5720, "Warnung: Maß %s konnte nicht positioniert werden."},
    {5721, "DXF-Farbe %d unbekannt, wird zu Stift %d."},
    {5728, "Warnung: Maß %s wurde nur als Linie erzeugt!"},
    {5729, "Warnung: Maß %s konnte nicht erzeugt werden!"},
    {5730, "DXF-Füllfarbe %d unbekannt, wird zu Füllfarbe %d."},
    {5731, "Attribut %s (Attribut %s) konnte nicht gesetzt werden!"},
    {5732, "Kann Protokoll-Datei '%s' nicht anlegen!"},
    {5733, "DATUM"},
    {5734, "erfolgreich gespeichert!"},
    {5735, "erfolgreich eingelesen!"},
    {5736, "Attribut layer nicht definiert!"},
    {5737, "für Font %d kein DXF-Style zugeordnet"},
    {5738, "keine Zeichenlängentabelle für font %s (%s)"},
    {5739, "Zeichen mit Code %d nicht in font %s!"},
    {5740, "Zeichen mit Code %d nicht in CAD-font %d!"},
    {5741, "falscher DXF-Textbezugspunkt: %d"},
    {5742, "DXF-3D erst ab ACAD-Version 11/12 möglich!"},
    {5743, "CAD-Füllfarbe %d unbekannt, wird zu Füllfarbe %d."},
    {5744, "Ungültige Füllschraffurkontur ignoriert!"},
    {5745, "Zuwenig Elemente in Füllschraffurkontur (%d)!"},
    {5746, "Füllschraffurkontur schneidet sich!"},
    {5747, "Füllschraffurkonturen schneiden sich!"},
    {5748, "Ungültige Textausrichtung (%d=%d)!"},
    {5749, "DXF Datei zu %d%% eingelesen ..."},
    {5750, "Koordinaten X=%lf, Y=%lf"},
    {5751, "Texthöhe zu klein! Text wurde nicht erzeugt!"},
    {5752, "Schraffurmuster %s wurde als Standardschraffur erzeugt!"},
    {5754, "Warning: Illegal Element type %d!"},
    {5755, "Fehler beim Erzeugen des ACIS Teils!"},
    {5756, "Fehler beim Erzeugen der Datei %s!"},
    {5758, "Version: %s"},
    {5759, "Zu viele Werte für %s"},
    {5760, "Modus %s aktiv"},
    {5761, "Farbattribut"},
    {5764, "Matrix - X%lg Y%lg Z%lg"},
    {5768, "Ausschnitt##DXF"},
    {5774, "Pixelbilder werden als JPG exportiert und nicht als TIF, da Dateiformat < DXF-2007"},
    {5775, "Layer werden aus Dateivorlage %s verwendet."},
    {5776, "Layer %s ist nicht in Dateivorlage definiert!"},
    {5778, "Warnung: Bild %s konnte nicht erzeugt werden!"},
    {5779, "3D Daten werden gelesen ..."},
    {5780, "Bitte das Ergebnis prüfen!"},
    {5781, "Korrigierte Datei(en):"},
    {5782, "Fehlerhafte Datei(en) wurde(n) automatisch korrigiert."},
    {5809, "Datei %s konnte nicht geöffnet werden!"},
    {5858, "Zeichnung wird geprüft ..."},
    {6996, "Verschiebung"},
    {7336, "Meereshöhe (m)"},
    {11317, "Texturschraffur nicht unterstützt!"},
    {11668, "BLOCK %s referenziert von %d INSERTs"},
    {11669, "%d BLOCKs als Kopien von INSERTs referenziert"},
    {11914, "Warnung: %s REGION-Objekte wurden beim 2D Lesen ignoriert!"},
    {12228, "Searching for VisMat %s!"},
    {12354, "Georeferenzierung ist bereits vorhanden. Die Zeichnung wird mit Bezug darauf eingefügt"},
    {20001, "nicht übernommen: %s"},
    {20002, "in der Datei verborgen: %s"},
    {20003, "%d %s (%s)"},
    {20004, "%d Objekte des Layouts %s"},
    {20005, "%d Objekte des Papierbereichs"},
    {20006, "%d Objekte des Modellbereichs"},
    {20007, "in Blöcken %d %s (%s)"},
    {20008, "und %d weitere"},
    {20011, "Layer aus"},
    {20012, "Layer gefroren"},
    {20013, "unsichtbar"},
    {20014, "Punkte ausgeblendet"},
    {20015, "Attributdefinition"},
    {20016, "Fenster des Blatts"},
    {20017, "kein Leser"},
    {20018, "anderer Bereich"},
    {20019, "Block nicht gefunden"},
    {20020, "rekursiver Block"},
    {20021, "zu tief verschachtelt"},
    {20022, "nirgends eingefügt"},
    {20023, "nichts zu zeichnen"},
    {20024, "Import vorher beendet"},
    {20025, "Füllungen ausgeblendet"},
    {20031, "Nicht genug Stifte für alle Farben und Linienstärken: die übrigen werden angenähert!"},
};
// clang-format on

constexpr bool isAscending() {
    for (std::size_t i = 1; i < std::size(MESSAGES); ++i)
        if (MESSAGES[i - 1].number >= MESSAGES[i].number) return false;
    return true;
}
static_assert(isAscending(), "messages are found by their number");

} // namespace

const char* DxMsgDefault(int number) {
    const auto* found =
        std::lower_bound(std::begin(MESSAGES), std::end(MESSAGES), number,
                         [](const Message& message, int wanted) { return message.number < wanted; });
    return found != std::end(MESSAGES) && found->number == number ? found->text : "";
}

UtCString DxMsgText(int number) {
    return TrtMsgGet("cad_msg.txt", number, DxMsgDefault(number));
}
