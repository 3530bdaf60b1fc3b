CASOS = {}
