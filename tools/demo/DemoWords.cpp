#include "DemoWords.h"

namespace Demo::Words {

const QStringList &givenNames()
{
    static const QStringList names = {
        "Mike",     "Pat",    "Janet",  "Robert",  "Linda",    "James",  "Mary",  "John",
        "Patricia", "David",  "Susan",  "Richard", "Karen",    "Thomas", "Nancy", "Charles",
        "Lisa",     "Daniel", "Betty",  "Mark",    "Sandra",   "Paul",   "Donna", "Steven",
        "Carol",    "Andrew", "Sharon", "Kevin",   "Michelle", "Brian",  "Laura", "George",
        "Deborah",  "Edward", "Angela", "Ronald",  "Melissa",  "Tony",   "Gary",  "Joe",
        "Frank",    "Rita",   "Walt",   "Doug",    "Terry",    "Bill",   "Ray",   "Sue",
        "Maria",    "Carlos", "Aisha",  "Wei",     "Priya",    "Omar",   "Grace", "Ellen"};
    return names;
}

const QStringList &surnames()
{
    static const QStringList names = {
        "Miller",   "Johnson",   "Smith",    "Brown",    "Jones",    "Garcia",   "Davis",
        "Wilson",   "Anderson",  "Taylor",   "Thomas",   "Moore",    "Martin",   "Jackson",
        "Thompson", "White",     "Harris",   "Clark",    "Lewis",    "Robinson", "Walker",
        "Young",    "Allen",     "King",     "Wright",   "Scott",    "Hill",     "Green",
        "Adams",    "Baker",     "Nelson",   "Carter",   "Mitchell", "Roberts",  "Turner",
        "Phillips", "Campbell",  "Parker",   "Evans",    "Edwards",  "Collins",  "Stewart",
        "Morris",   "Murphy",    "Cook",     "Rogers",   "Morgan",   "Peterson", "Cooper",
        "Reed",     "Bailey",    "Kelly",    "Howard",   "Ward",     "Cox",      "Richardson",
        "Wood",     "Watson",    "Brooks",   "Bennett",  "Gray",     "Hughes",   "Price",
        "Sanders",  "Myers",     "Long",     "Ross",     "Foster",   "O'Brien",  "O'Neil",
        "D'Amico",  "O'Connor",  "O'Malley", "McDonald", "McKenzie", "Kowalski", "Nguyen",
        "Schmidt",  "Lindqvist", "Morales",  "Jensen",   "Sullivan", "Becker",   "Novak"};
    return names;
}

const QStringList &frenchGivenNames()
{
    static const QStringList names = {"Jean",      "Marie",    "Pierre",  "Louise", "Michel",
                                      "Sylvie",    "André",    "Chantal", "Luc",    "Isabelle",
                                      "François",  "Nathalie", "Denis",   "Josée",  "Marc",
                                      "Geneviève", "Éric",     "Hélène",  "Yves",   "Céline"};
    return names;
}

const QStringList &frenchSurnames()
{
    static const QStringList names = {
        "Tremblay", "Gagnon",   "Roy",      "Côté",      "Bouchard",  "Gauthier", "Morin",
        "Lavoie",   "Fortin",   "Gagné",    "Ouellet",   "Pelletier", "Bélanger", "Lévesque",
        "Bergeron", "Leblanc",  "Paquette", "Girard",    "Simard",    "Boucher",  "Caron",
        "Beaulieu", "Cloutier", "Dubé",     "Poirier",   "Fournier",  "Lapointe", "Leclerc",
        "Lefebvre", "Poulin",   "Thibault", "St-Pierre", "D'Auteuil", "L'Heureux"};
    return names;
}

const QStringList &companyPrefixes()
{
    static const QStringList names = {
        "Acme",       "Allied",    "American",  "Apex",          "Bayside",      "Benchmark",
        "Blue Ridge", "Capitol",   "Cardinal",  "Central",       "Century",      "Summit",
        "Heartland",  "Prairie",   "Lakeshore", "Liberty",       "Midwest",      "Pioneer",
        "Premier",    "Riverside", "Sterling",  "Sunrise",       "Tri-County",   "Union",
        "United",     "Valley",    "Keystone",  "Lincoln Land",  "Evergreen",    "Great Lakes",
        "Sangamon",   "Illini",    "Frontier",  "Pacific Coast", "First Choice", "Reliable",
        "Metro",      "Northstar", "Old Town",  "Statewide",     "Elite",        "Quality"};
    return names;
}

const QStringList &canadianPrefixes()
{
    static const QStringList names = {
        "Northern Lights", "Maple Leaf", "True North", "Laurentian", "Rideau",  "Great Lakes",
        "Dominion",        "Polar",      "Cascade",    "Maritime",   "Prairie", "Niagara",
        "Algonquin",       "Boreal",     "Royal",      "Capital",    "Harbour", "Northland"};
    return names;
}

const QStringList &streets()
{
    static const QStringList names = {
        "Main",     "Oak",     "Maple",     "Washington", "Lincoln",  "Jefferson", "Monroe",
        "Adams",    "Cedar",   "Elm",       "Park",       "Lake",     "Hill",      "Church",
        "Market",   "Mill",    "River",     "Spring",     "Wabash",   "Capitol",   "Industrial",
        "Commerce", "Dirksen", "MacArthur", "Stevenson",  "Veterans", "Chestnut",  "Walnut",
        "Ridge",    "Sunset",  "Highland",  "Meadow",     "Franklin", "Madison",   "Grand"};
    return names;
}

const QStringList &canadianStreets()
{
    static const QStringList names = {"King",       "Queen",   "Bay",        "Yonge",
                                      "Bloor",      "Dundas",  "Wellington", "Richmond",
                                      "Sparks",     "Portage", "Jasper",     "Granville",
                                      "Barrington", "Main",    "Maple",      "Victoria"};
    return names;
}

const QStringList &streetKinds()
{
    static const QStringList names = {"Street",  "Avenue", "Road",  "Drive", "Boulevard",
                                      "Parkway", "Lane",   "Court", "Way",   "Place"};
    return names;
}

const QStringList &frenchStreets()
{
    static const QStringList names = {
        "rue Saint-Denis",         "boulevard René-Lévesque", "rue Sainte-Catherine",
        "chemin de la Côte",       "avenue du Parc",          "rue Principale",
        "boulevard Saint-Laurent", "rue Notre-Dame",          "rue King Ouest",
        "boulevard Laurier",       "rue de l'Église",         "avenue Cartier"};
    return names;
}

const std::vector<Place> &usPlaces()
{
    static const std::vector<Place> places = {
        {"Springfield", "IL", "627", "217"},  {"Chicago", "IL", "606", "312"},
        {"Peoria", "IL", "616", "309"},       {"Champaign", "IL", "618", "217"},
        {"Decatur", "IL", "625", "217"},      {"Bloomington", "IL", "617", "309"},
        {"Jacksonville", "IL", "626", "217"}, {"Chatham", "IL", "626", "217"},
        {"St. Louis", "MO", "631", "314"},    {"Indianapolis", "IN", "462", "317"},
        {"Madison", "WI", "537", "608"},      {"Milwaukee", "WI", "532", "414"},
        {"Des Moines", "IA", "503", "515"},   {"Columbus", "OH", "432", "614"},
        {"Detroit", "MI", "482", "313"},      {"Minneapolis", "MN", "554", "612"},
        {"Louisville", "KY", "402", "502"},   {"Nashville", "TN", "372", "615"},
        {"Kansas City", "MO", "641", "816"},  {"Denver", "CO", "802", "303"},
        {"Dallas", "TX", "752", "214"},       {"Atlanta", "GA", "303", "404"},
        {"Boston", "MA", "021", "617"},       {"Philadelphia", "PA", "191", "215"},
        {"Pittsburgh", "PA", "152", "412"},   {"Buffalo", "NY", "142", "716"},
        {"Albany", "NY", "122", "518"},       {"Portland", "OR", "972", "503"},
        {"Seattle", "WA", "981", "206"},      {"Phoenix", "AZ", "850", "602"},
        {"Omaha", "NE", "681", "402"},        {"Richmond", "VA", "232", "804"}};
    return places;
}

const std::vector<Place> &canadianPlaces()
{
    static const std::vector<Place> places = {{"Toronto", "ON", "M5V", "416", true},
                                              {"Ottawa", "ON", "K1P", "613", true},
                                              {"Mississauga", "ON", "L5B", "905", true},
                                              {"Hamilton", "ON", "L8P", "905", true},
                                              {"London", "ON", "N6A", "519", true},
                                              {"Windsor", "ON", "N9A", "519", true},
                                              {"Kingston", "ON", "K7L", "613", true},
                                              {"Montréal", "QC", "H2X", "514", true, true},
                                              {"Québec", "QC", "G1R", "418", true, true},
                                              {"Laval", "QC", "H7N", "450", true, true},
                                              {"Gatineau", "QC", "J8X", "819", true, true},
                                              {"Sherbrooke", "QC", "J1H", "819", true, true},
                                              {"Trois-Rivières", "QC", "G9A", "819", true, true},
                                              {"Winnipeg", "MB", "R3C", "204", true},
                                              {"Calgary", "AB", "T2P", "403", true},
                                              {"Edmonton", "AB", "T5J", "780", true},
                                              {"Vancouver", "BC", "V6B", "604", true},
                                              {"Halifax", "NS", "B3J", "902", true},
                                              {"Moncton", "NB", "E1C", "506", true},
                                              {"Regina", "SK", "S4P", "306", true}};
    return places;
}

const std::vector<Trade> &trades()
{
    // 1099 types: 0 none, 1 MISC, 2 INT, 3 DIV, 4 the second MISC code, 5 NEC. The order is
    // fixed: vendors refer to a trade by its position.
    static const std::vector<Trade> list = {
        {.words = {"Office Supply", "Office Products", "Stationers", "Business Supply"},
         .frenchWords = {"Fournitures de bureau", "Papeterie"},
         .glAccount = 5100,
         .products = {"Copier paper", "Toner cartridges", "Envelopes", "Office supplies",
                      "Binders and folders", "Name badges"},
         .minAmount = 15,
         .maxAmount = 650,
         .forms = {0}},
        {.words = {"Printing", "Press", "Graphics", "Print & Copy"},
         .frenchWords = {"Imprimerie"},
         .glAccount = 5300,
         .products = {"Newsletter printing", "Business cards", "Banners", "Letterhead",
                      "Event programs", "Membership directory"},
         .minAmount = 80,
         .maxAmount = 4500,
         .forms = {0, 1},
         .ownerName = true},
        {.words = {"Mailing Services", "Courier", "Delivery", "Mail House"},
         .frenchWords = {"Messagerie"},
         .glAccount = 5310,
         .products = {"Postage", "Bulk mailing", "Courier service", "Postage meter refill"},
         .minAmount = 25,
         .maxAmount = 2500,
         .forms = {0}},
        {.words = {"Communications", "Telecom", "Wireless", "Networks"},
         .frenchWords = {"Télécom"},
         .glAccount = 5400,
         .products = {"Telephone service", "Internet service", "Mobile phones", "Long distance"},
         .minAmount = 60,
         .maxAmount = 900,
         .forms = {0}},
        {.words = {"Power & Light", "Gas Company", "Water Works", "Energy"},
         .frenchWords = {"Énergie"},
         .glAccount = 5420,
         .products = {"Electricity", "Natural gas", "Water and sewer"},
         .minAmount = 80,
         .maxAmount = 1400,
         .forms = {0}},
        {.words = {"Computer Services", "Technology", "Software", "Data Systems", "IT Solutions"},
         .frenchWords = {"Informatique"},
         .glAccount = 5450,
         .products = {"Software subscription", "Computer repair", "Website hosting",
                      "Network support", "Laptop"},
         .minAmount = 40,
         .maxAmount = 3800,
         .forms = {0, 1, 5},
         .ownerName = true},
        {.words = {"Properties", "Realty", "Hall", "Banquet Center", "Management"},
         .frenchWords = {"Immeubles", "Gestion immobilière"},
         .glAccount = 5500,
         .products = {"Office rent", "Hall rental", "Storage unit rent", "Parking"},
         .minAmount = 300,
         .maxAmount = 4200,
         .forms = {0, 1, 4}},
        {.words = {"Catering", "Caterers", "Bakery", "Banquets"},
         .frenchWords = {"Traiteur"},
         .glAccount = 5640,
         .products = {"Annual dinner catering", "Luncheon", "Coffee service", "Board meeting lunch",
                      "Reception"},
         .minAmount = 90,
         .maxAmount = 6500,
         .forms = {0, 1},
         .ownerName = true},
        {.words = {"Travel", "Tours", "Limousine", "Hotel", "Inn"},
         .frenchWords = {"Voyages", "Hôtel"},
         .glAccount = 5610,
         .products = {"Airfare", "Hotel", "Conference travel", "Bus charter"},
         .minAmount = 120,
         .maxAmount = 3500,
         .forms = {0}},
        {.words = {"Audio Visual", "Sound", "Staging", "AV Rentals"},
         .frenchWords = {"Audiovisuel"},
         .glAccount = 5620,
         .products = {"Sound system rental", "Projector rental", "Stage lighting"},
         .minAmount = 150,
         .maxAmount = 4800,
         .forms = {0, 1, 5},
         .ownerName = true},
        {.words = {"Trophies", "Awards", "Engraving", "Promotions"},
         .frenchWords = {"Trophées"},
         .glAccount = 5630,
         .products = {"Plaques", "Awards", "Engraving", "Promotional items"},
         .minAmount = 40,
         .maxAmount = 2200,
         .forms = {0},
         .ownerName = true},
        {.words = {"Plumbing", "Plumbing & Heating", "Mechanical"},
         .frenchWords = {"Plomberie"},
         .glAccount = 5710,
         .products = {"Plumbing repair", "Water heater service", "Drain cleaning",
                      "Furnace service"},
         .minAmount = 95,
         .maxAmount = 3600,
         .forms = {0, 1, 5},
         .ownerName = true},
        {.words = {"Electric", "Electrical", "Lighting"},
         .frenchWords = {"Électricité"},
         .glAccount = 5710,
         .products = {"Electrical repair", "Lighting upgrade", "Generator service"},
         .minAmount = 120,
         .maxAmount = 4200,
         .forms = {0, 1, 5},
         .ownerName = true},
        {.words = {"Cleaning", "Janitorial", "Maintenance", "Building Services"},
         .frenchWords = {"Entretien ménager"},
         .glAccount = 5720,
         .products = {"Janitorial service", "Carpet cleaning", "Window cleaning", "Floor waxing"},
         .minAmount = 85,
         .maxAmount = 1800,
         .forms = {0, 1, 5},
         .ownerName = true},
        {.words = {"Landscaping", "Lawn Care", "Tree Service", "Snow Removal"},
         .frenchWords = {"Paysagement", "Déneigement"},
         .glAccount = 5730,
         .products = {"Lawn care", "Snow removal", "Tree trimming", "Spring cleanup"},
         .minAmount = 60,
         .maxAmount = 2400,
         .forms = {0, 1, 5},
         .ownerName = true},
        {.words = {"Insurance", "Insurance Agency", "Mutual Insurance", "Underwriters"},
         .frenchWords = {"Assurances"},
         .glAccount = 5800,
         .products = {"Liability insurance", "Property insurance", "D&O insurance",
                      "Bonding premium"},
         .minAmount = 250,
         .maxAmount = 9500,
         .forms = {0}},
        {.words = {"Law Office", "Legal Services", "Law Group"},
         .frenchWords = {"Avocats"},
         .glAccount = 5910,
         .products = {"Legal services", "Contract review", "Bylaw revision", "Retainer"},
         .minAmount = 250,
         .maxAmount = 7500,
         .forms = {0, 1, 4, 5}},
        {.words = {"CPAs", "Accounting", "Tax Services", "& Associates"},
         .frenchWords = {"Comptables"},
         .glAccount = 5920,
         .products = {"Annual audit", "Tax return preparation", "Bookkeeping services",
                      "Form 990 preparation"},
         .minAmount = 300,
         .maxAmount = 9500,
         .forms = {0, 5}},
        {.words = {"Consulting", "Associates", "Advisors", "Group"},
         .frenchWords = {"Experts-conseils"},
         .glAccount = 5930,
         .products = {"Consulting services", "Strategic planning workshop", "Membership survey",
                      "Facilitation"},
         .minAmount = 400,
         .maxAmount = 8500,
         .forms = {0, 1, 5}},
        {.words = {},
         .frenchWords = {},
         .glAccount = 5940,
         .products = {"Guest speaker fee", "Contract labor", "Musical performance", "Photography",
                      "Workshop instruction", "Honorarium"},
         .minAmount = 100,
         .maxAmount = 3000,
         .forms = {0, 1, 4, 5},
         .person = true},
        {.words = {"Savings Bank", "Credit Union", "Trust Company"},
         .frenchWords = {"Caisse populaire"},
         .glAccount = 5950,
         .products = {"Interest on member loan", "Note interest", "Bond interest"},
         .minAmount = 20,
         .maxAmount = 1800,
         .forms = {2}},
        {.words = {"Holdings", "Family Trust", "Investments"},
         .frenchWords = {"Placements"},
         .glAccount = 5960,
         .products = {"Patronage dividend", "Dividend distribution"},
         .minAmount = 50,
         .maxAmount = 2500,
         .forms = {3}},
        {.words = {"Publishing", "Journal", "Press Service"},
         .frenchWords = {"Éditions"},
         .glAccount = 5200,
         .products = {"Subscription", "Association dues", "Directory listing"},
         .minAmount = 50,
         .maxAmount = 1500,
         .forms = {0}},
        {.words = {"Equipment Rental", "Rentals", "Leasing"},
         .frenchWords = {"Location"},
         .glAccount = 5110,
         .products = {"Copier lease", "Tent rental", "Table and chair rental",
                      "Postage meter lease"},
         .minAmount = 75,
         .maxAmount = 2600,
         .forms = {0, 1},
         .ownerName = true},
    };
    return list;
}

const QStringList &noteLines()
{
    static const QStringList lines = {
        "%1 Called about a missing invoice; copy faxed over by %2.",
        "%1 W-9 received and filed.",
        "%1 Asked for statements by e-mail instead of mail.",
        "Prefers payment by check; no credit cards.",
        "Remit to the P.O. box, not the street address.",
        "%1 Price increase of 3% from next quarter, per %2.",
        "Deliveries to the side door only.",
        "%1 Certificate of insurance received, good for one year.",
        "Ask for %2 in accounts receivable.",
        "%1 Disputed invoice on hold until the credit memo arrives.",
        "Gives 2% discount if paid within 10 days.",
        "%1 New contract signed by the board; see the minutes.",
        "Closed the last two weeks of December.",
        "Do not use for catering after the complaint from the spring banquet.",
        "%1 Account number changed; old statements show the previous one."};
    return lines;
}

const QStringList &freeMailDomains()
{
    static const QStringList domains = {"gmail.com", "yahoo.com", "outlook.com", "comcast.net",
                                        "aol.com"};
    return domains;
}

} // namespace Demo::Words
