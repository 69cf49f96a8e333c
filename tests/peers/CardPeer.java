// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0

import ezvcard.VCard;
import ezvcard.io.ParseWarning;
import ezvcard.io.text.VCardReader;
import ezvcard.parameter.VCardParameter;
import ezvcard.property.*;
import java.io.File;
import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.text.SimpleDateFormat;
import java.util.*;
import java.util.stream.Collectors;

// Reads the cards of a file and prints what it took of each, a line of JSON a card, with the
// warnings of reading and checking it. The keys are those of card_peer.py.
public class CardPeer {
  public static void main(String[] arguments) throws Exception {
    PrintStream out = new PrintStream(System.out, false, StandardCharsets.UTF_8);
    try (VCardReader reader = new VCardReader(new File(arguments[0]))) {
      for (VCard card = reader.readNext(); card != null; card = reader.readNext()) {
        Map<String, Object> fields = fieldsOf(card);
        List<Object> warnings = new ArrayList<>();
        for (ParseWarning warning : reader.getWarnings()) warnings.add(warning.toString());
        String problems = card.validate(card.getVersion()).toString();
        if (!problems.isEmpty()) warnings.add(problems);
        fields.put("warnings", warnings);
        out.println(json(fields));
      }
    }
    out.flush();
  }

  private static Map<String, Object> fieldsOf(VCard card) {
    Map<String, Object> fields = new TreeMap<>();
    fields.put("version", card.getVersion().getVersion());
    fields.put("uid", card.getUid() == null ? null : card.getUid().getValue());
    fields.put("fn", card.getFormattedName() == null ? null : card.getFormattedName().getValue());
    StructuredName name = card.getStructuredName();
    if (name != null) {
      fields.put("n", List.of(text(name.getFamily()), text(name.getGiven()),
          joined(name.getAdditionalNames()), joined(name.getPrefixes()),
          joined(name.getSuffixes())));
    }
    fields.put("nickname", card.getNicknames().stream().flatMap(each -> each.getValues().stream())
        .collect(Collectors.toList()));
    fields.put("bday", days(card.getBirthdays()));
    fields.put("anniversary", days(card.getAnniversaries()));
    fields.put("tel", list(card.getTelephoneNumbers(),
        each -> List.of(types(each.getTypes(), each.getPref()), text(each.getText()))));
    fields.put("email", list(card.getEmails(),
        each -> List.of(types(each.getTypes(), each.getPref()), text(each.getValue()))));
    fields.put("impp", list(card.getImpps(), each -> List.of(
        text(each.getParameter("X-SERVICE-TYPE")), each.getUri().toString())));
    fields.put("url", list(card.getUrls(),
        each -> List.of(words(each.getType()), text(each.getValue()))));
    fields.put("adr", list(card.getAddresses(), each -> List.of(
        types(each.getTypes(), each.getPref()),
        List.of(joined(each.getPoBoxes()), joined(each.getExtendedAddresses()),
            joined(each.getStreetAddresses()), joined(each.getLocalities()),
            joined(each.getRegions()), joined(each.getPostalCodes()),
            joined(each.getCountries())))));
    fields.put("note", list(card.getNotes(), Note::getValue));
    fields.put("title", list(card.getTitles(), Title::getValue));
    fields.put("role", list(card.getRoles(), Role::getValue));
    fields.put("hobby", list(card.getHobbies(), Hobby::getValue));
    fields.put("org", list(card.getOrganizations(),
        each -> List.of(words(each.getType()), each.getValues())));
    fields.put("photo", list(card.getPhotos(), each -> List.of(
        each.getContentType() == null ? "" : text(each.getContentType().getValue()),
        each.getData().length)));
    fields.put("categories", card.getCategories() == null ? List.of()
        : card.getCategories().getValues());
    fields.put("member", list(card.getMembers(), Member::getValue));
    fields.put("kind", card.getKind() == null ? "" : card.getKind().getValue());
    fields.put("other", list(card.getExtendedProperties(), each -> List.of(
        each.getPropertyName(), text(each.getValue()))));
    return fields;
  }

  private static <T> List<Object> list(List<T> entries,
      java.util.function.Function<T, Object> read) {
    return entries.stream().map(read).collect(Collectors.toList());
  }

  private static String text(String value) {
    return value == null ? "" : value;
  }

  private static String joined(List<String> parts) {
    return String.join(",", parts);
  }

  private static List<String> words(String types) {
    return types == null ? List.of() : List.of(types.toLowerCase(Locale.ROOT).split(","));
  }

  private static List<String> types(List<? extends VCardParameter> types, Integer pref) {
    List<String> words = types.stream().map(each -> each.getValue().toLowerCase(Locale.ROOT))
        .collect(Collectors.toCollection(ArrayList::new));
    if (pref != null) words.add("pref=" + pref);
    return words;
  }

  private static List<Object> days(List<? extends DateOrTimeProperty> properties) {
    SimpleDateFormat form = new SimpleDateFormat("yyyy-MM-dd");
    return properties.stream()
        .map(each -> each.getDate() == null ? "no date" : form.format(each.getDate()))
        .collect(Collectors.toList());
  }

  private static String json(Object value) {
    if (value == null) return "null";
    if (value instanceof Number) return value.toString();
    if (value instanceof Map<?, ?> map) {
      return map.entrySet().stream().map(each -> json(each.getKey()) + ":" + json(each.getValue()))
          .collect(Collectors.joining(",", "{", "}"));
    }
    if (value instanceof List<?> list)
      return list.stream().map(CardPeer::json).collect(Collectors.joining(",", "[", "]"));
    StringBuilder text = new StringBuilder("\"");
    for (char unit : value.toString().toCharArray()) {
      if (unit < ' ' || unit == '"' || unit == '\\' || unit > '~')
        text.append(String.format("\\u%04x", (int) unit));
      else
        text.append(unit);
    }
    return text.append('"').toString();
  }
}
