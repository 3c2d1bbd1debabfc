#include "box_model.h"

#include <fstream>

namespace bench {

namespace {

constexpr const char* metamodel = R"(<?xml version="1.0" encoding="UTF-8"?>
<ecore:EPackage xmi:version="2.0" xmlns:xmi="http://www.omg.org/XMI"
    xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"
    xmlns:ecore="http://www.eclipse.org/emf/2002/Ecore" name="bench" nsURI="urn:bench" nsPrefix="bench">
  <eClassifiers xsi:type="ecore:EClass" name="Box" eSuperTypes="#//Named">
    <eStructuralFeatures xsi:type="ecore:EReference" name="parts" upperBound="-1" eType="#//Part" containment="true"/>
    <eStructuralFeatures xsi:type="ecore:EReference" name="boxes" upperBound="-1" eType="#//Box" containment="true"/>
  </eClassifiers>
  <eClassifiers xsi:type="ecore:EClass" name="Named" abstract="true">
    <eStructuralFeatures xsi:type="ecore:EAttribute" name="name" eType="ecore:EDataType http://www.eclipse.org/emf/2002/Ecore#//EString"/>
  </eClassifiers>
  <eClassifiers xsi:type="ecore:EClass" name="Part" eSuperTypes="#//Named">
    <eStructuralFeatures xsi:type="ecore:EAttribute" name="code" iD="true" eType="ecore:EDataType http://www.eclipse.org/emf/2002/Ecore#//EString"/>
    <eStructuralFeatures xsi:type="ecore:EAttribute" name="size" eType="ecore:EDataType http://www.eclipse.org/emf/2002/Ecore#//EInt"/>
    <eStructuralFeatures xsi:type="ecore:EReference" name="next" eType="#//Part"/>
    <eStructuralFeatures xsi:type="ecore:EReference" name="twin" eType="#//Part"/>
  </eClassifiers>
</ecore:EPackage>
)";

}  // namespace

void WriteBoxMetamodel(const std::string& file) {
    std::ofstream(file, std::ios::binary) << metamodel;
}

void WriteBoxModel(const std::string& file, long objects) {
    std::ofstream out(file, std::ios::binary);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<bench:Box xmlns:bench=\"urn:bench\" name=\"All\">\n";
    const long boxes = objects / 100;
    const long parts = PartsAmong(objects);
    for (long box = 0; box < boxes; ++box) {
        out << "  <boxes name=\"Box " << box << "\">\n";
        for (long place = 0; place < 99; ++place) {
            const long part = box * 99 + place;
            out << "    <parts name=\"Part " << part << "\" code=\"p" << part << "\" size=\""
                << part % 1000 << "\" next=\"p" << (part + 1) % parts << "\" twin=\"//@boxes."
                << box * 7 % boxes << "/@parts." << place * 5 % 99 << "\"/>\n";
        }
        out << "  </boxes>\n";
    }
    out << "</bench:Box>\n";
}

}  // namespace bench
